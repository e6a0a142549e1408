#pragma once

#include <cstdlib>
#include <filesystem>
#include <string>
#include <system_error>

namespace celldesk::simulator {

/// A folder of its own, which is also the runtime directory while it exists.
class TemporaryFolder {
 public:
  TemporaryFolder() {
    std::string pattern = std::filesystem::temp_directory_path() / "celldesk-test-XXXXXX";
    path_ = mkdtemp(pattern.data());
    const char* old = std::getenv("XDG_RUNTIME_DIR");
    had_runtime_ = old != nullptr;
    if (old) old_runtime_ = old;
    setenv("XDG_RUNTIME_DIR", path_.c_str(), 1);
  }
  TemporaryFolder(const TemporaryFolder&) = delete;
  TemporaryFolder& operator=(const TemporaryFolder&) = delete;
  ~TemporaryFolder() {
    if (had_runtime_) {
      setenv("XDG_RUNTIME_DIR", old_runtime_.c_str(), 1);
    } else {
      unsetenv("XDG_RUNTIME_DIR");
    }
    std::error_code error;
    std::filesystem::remove_all(path_, error);
  }

  const std::string& path() const { return path_; }
  std::string File(const std::string& name) const { return path_ + '/' + name; }

 private:
  std::string path_;
  std::string old_runtime_;
  bool had_runtime_ = false;
};

}  // namespace celldesk::simulator
