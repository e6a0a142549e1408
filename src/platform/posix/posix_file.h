#pragma once

#include "platform/file.h"

namespace celldesk {

/// Files of the system. Only regular files can be mapped; a directory, device or pipe is refused with
/// kErrorAccessDenied, at once. Nothing is written to directories and pipes.
class PosixFileSystem : public FileSystem {
 public:
  std::unique_ptr<MappedFile> Map(std::u16string_view path, SystemError& error) override;
  std::unique_ptr<OutputFile> Create(std::u16string_view path, SystemError& error) override;
  SystemError MakeFolder(std::u16string_view path) override;
  std::vector<std::u16string> Names(std::u16string_view folder) override;
  SystemError Rename(std::u16string_view path, std::u16string_view new_path) override;
  SystemError Remove(std::u16string_view path) override;
};

/// The system error code that stands for an errno value.
SystemError FromErrno(int code);

}  // namespace celldesk
