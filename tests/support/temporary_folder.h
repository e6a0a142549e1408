#pragma once

#include <stdlib.h>

#include <filesystem>
#include <fstream>
#include <string>

namespace celldesk {

/// A fresh folder that goes, with all that is in it, when the object does.
class TemporaryFolder {
 public:
  TemporaryFolder() {
    std::string name = (std::filesystem::temp_directory_path() / "celldesk-test-XXXXXX").string();
    path_ = ::mkdtemp(name.data());
  }
  ~TemporaryFolder() {
    std::error_code error;
    std::filesystem::remove_all(path_, error);
  }
  TemporaryFolder(const TemporaryFolder&) = delete;
  TemporaryFolder& operator=(const TemporaryFolder&) = delete;

  const std::filesystem::path& path() const { return path_; }
  /// Writes a file with the folders on the way to it.
  void Write(const std::filesystem::path& file, const std::string& content) const {
    std::filesystem::create_directories((path_ / file).parent_path());
    std::ofstream(path_ / file, std::ios::binary) << content;
  }

 private:
  std::filesystem::path path_;
};

}  // namespace celldesk
