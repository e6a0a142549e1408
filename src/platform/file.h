#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "platform/system_error.h"

namespace celldesk {

/// A file whose whole content is in memory.
class MappedFile {
 public:
  virtual ~MappedFile() = default;
  /// The content as it was when the file was opened; empty for an empty file. Borrowed for the object's life.
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
  /// The longest file that is mapped, in bytes: many times what the largest book or folder takes.
  static constexpr std::size_t kLargestFile = std::size_t{64} << 20;

  /// Takes an existing file's content; null with `error` set when that fails: kErrorFileTooLarge beyond the
  /// limit, kErrorReadFault for a file that became shorter meanwhile. Whatever becomes of the file later, the
  /// content stays. Other readers are let in.
  virtual std::unique_ptr<MappedFile> Map(std::u16string_view path, SystemError& error) = 0;
  /// Creates a file, replacing an existing one's content; null with `error` set when that fails.
  virtual std::unique_ptr<OutputFile> Create(std::u16string_view path, SystemError& error) = 0;
  /// Makes a folder, with every missing one on the way to it; success when it is there already.
  virtual SystemError MakeFolder(std::u16string_view path) = 0;
  /// Names of what a folder holds, in no order; none for a folder that cannot be read.
  virtual std::vector<std::u16string> Names(std::u16string_view folder) = 0;
  /// Gives a file another name in its folder, in one step; a file that had that name is replaced.
  virtual SystemError Rename(std::u16string_view path, std::u16string_view new_path) = 0;
  virtual SystemError Remove(std::u16string_view path) = 0;
};

}  // namespace celldesk
