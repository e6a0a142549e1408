#pragma once

#include <chrono>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <functional>
#include <memory>
#include <ostream>
#include <span>
#include <string_view>

#include "util/thread_annotations.h"

namespace celldesk {

/// A readable record of what went over the serial line, for bug reports. One line of text for each write and
/// read, with the time (UTC), ">" for sent and "<" for received, and the bytes: printable ASCII as it is, the
/// rest as \r, \n, \\ or \xNN. Any thread.
class LineTrace {
 public:
  using Clock = std::function<std::chrono::system_clock::time_point()>;

  /// Appends to the file at `path`; null when it cannot be opened.
  static std::shared_ptr<LineTrace> ToFile(const std::filesystem::path& path);
  /// Writes to `output`; `clock` tells the time of each line.
  LineTrace(std::unique_ptr<std::ostream> output, Clock clock);

  void Opened(std::u16string_view port, bool success);
  void Closed(std::u16string_view port);
  void Sent(std::span<const std::uint8_t> bytes);
  void Received(std::span<const std::uint8_t> bytes);

 private:
  void WriteLine(std::string_view direction, std::string_view text);

  Mutex lock_;
  std::unique_ptr<std::ostream> output_ CELLDESK_GUARDED_BY(lock_);
  const Clock clock_;
};

}  // namespace celldesk
