#pragma once

#include <functional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "platform/file.h"
#include "util/calendar_time.h"
#include "util/status.h"

namespace celldesk {

/// What is to be copied: a book or a folder of messages.
struct CopySource {
  std::u16string file_name;  ///< "Address-SIM.adr"
  /// Writes the content to a file of this path.
  std::function<Status(std::u16string_view path)> write;
};

/// Dated copies of books and folders in a folder of their own, for what a command replaces or empties:
/// "2026-11-21 14.30.05.120 Address-SIM.adr". Each is an ordinary file that the program imports. What is
/// copied already is not copied again. The newest are kept, by the dates in their names; the copies just made
/// are kept whatever the clock says. Interface thread only.
class SafetyCopies {
 public:
  static constexpr std::size_t kMostKept = 20;

  /// The file system is borrowed for the object's life. The folder is made by the first copy.
  SafetyCopies(FileSystem& files, std::u16string_view folder) : files_(files), folder_(folder) {}

  const std::u16string& folder() const { return folder_; }
  /// Copies every source; a copy is in the folder whole or not at all. `now` is the user's local time. The
  /// first failure, which keeps none of the other sources from being copied.
  Status Save(std::span<const CopySource> sources, const CalendarTime& now);

 private:
  Status Copy(const CopySource& source, const CalendarTime& now);
  Status Keep(const CopySource& source, std::u16string_view unfinished, const CalendarTime& now);
  bool IsSameAsNewest(const CopySource& source, std::u16string_view path) const;
  std::u16string FreeName(const CopySource& source, const CalendarTime& now) const;
  std::u16string PathOf(std::u16string_view name) const;
  std::vector<std::u16string> Names() const;
  void DropOldest();

  FileSystem& files_;
  std::u16string folder_;
  std::vector<std::u16string> fresh_;  // made by the present Save
};

}  // namespace celldesk
