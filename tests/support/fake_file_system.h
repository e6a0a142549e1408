#pragma once

#include <map>
#include <string>
#include <string_view>

#include "platform/file.h"

namespace celldesk {

/// Files in memory, by path.
class FakeFileSystem : public FileSystem {
 public:
  std::unique_ptr<MappedFile> Map(std::u16string_view path, SystemError& error) override;
  std::unique_ptr<OutputFile> Create(std::u16string_view path, SystemError& error) override;
  SystemError MakeFolder(std::u16string_view path) override;
  std::vector<std::u16string> Names(std::u16string_view folder) override;
  SystemError Rename(std::u16string_view path, std::u16string_view new_path) override;
  SystemError Remove(std::u16string_view path) override;

  std::map<std::u16string, std::string, std::less<>> files;
  SystemError open_error = kErrorSuccess;   ///< anything else: no file opens
  SystemError write_error = kErrorSuccess;  ///< of the writes beyond `allowed_writes`
  int allowed_writes = 0;
  SystemError close_error = kErrorSuccess;
  SystemError rename_error = kErrorSuccess;
  int writes = 0;      ///< tried so far
  int open_files = 0;  ///< mapped or being written
};

}  // namespace celldesk
