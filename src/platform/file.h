#pragma once

#include <cstdint>
#include <memory>
#include <span>
#include <string_view>

#include "platform/system_error.h"

namespace celldesk {

/// A file open for reading, mapped whole.
class MappedFile {
 public:
  virtual ~MappedFile() = default;
  /// The content; empty for an empty file. Borrowed for the object's life.
  virtual std::span<const std::uint8_t> bytes() const = 0;
};

/// A file open for writing.
class OutputFile {
 public:
  virtual ~OutputFile() = default;
  /// Writes all of `bytes`; after a failure some of them may be in the file.
  virtual SystemError Write(std::span<const std::uint8_t> bytes) = 0;
  /// Closes the file; what earlier writes could not report is reported here. Destruction closes, too.
  virtual SystemError Close() = 0;
};

/// Files by path. Interface thread only.
class FileSystem {
 public:
  virtual ~FileSystem() = default;
  /// Opens an existing file and maps it; null with `error` set when that fails. Other readers are let in.
  virtual std::unique_ptr<MappedFile> Map(std::u16string_view path, SystemError& error) = 0;
  /// Creates a file, replacing an existing one's content; null with `error` set when that fails.
  virtual std::unique_ptr<OutputFile> Create(std::u16string_view path, SystemError& error) = 0;
};

}  // namespace celldesk
