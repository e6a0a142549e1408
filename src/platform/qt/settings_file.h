#pragma once

#include <cstdint>
#include <filesystem>
#include <functional>
#include <optional>
#include <string>

#include "platform/registry.h"
#include "platform/settings_document.h"

namespace celldesk {

/// A settings file that several processes change. A change reads the file anew, under a lock that all writers
/// take (a file beside it, with ".lock" at its end), and replaces it whole; it is on the disk when the call
/// returns. A reader takes no lock: it finds the file as it was before or after a change.
class SettingsFile {
 public:
  explicit SettingsFile(std::u16string path) : path_(std::move(path)) {}

  /// The content; an empty document when there is no file yet, none when it cannot be read, is no ordinary
  /// file or has more than 32 MB: then nothing replaces it either. A file with the time and size that it had
  /// when it was last read is not read again, once its time is two seconds old. One thread at a time.
  std::optional<SettingsDocument> Read() const;
  /// Runs `change` on the present content and, when it returns success and changed something, writes that. A
  /// file with lines of no known form is first copied beside itself, with ".damaged" at its end (".damaged-2"
  /// and so on when that is there already).
  SystemError Change(const std::function<SystemError(SettingsDocument&)>& change);

 private:
  // What tells one content of the file from the next.
  struct Stamp {
    std::filesystem::file_time_type time;
    std::uintmax_t size = 0;

    bool operator==(const Stamp&) const = default;
  };
  struct Reading {
    Stamp stamp;
    SettingsDocument document;
  };

  std::optional<Stamp> PresentStamp() const;
  std::optional<SettingsDocument> ReadAnew() const;
  bool Write(const std::string& text) const;
  bool KeepDamaged() const;

  const std::u16string path_;
  mutable std::optional<Reading> last_;
};

}  // namespace celldesk
