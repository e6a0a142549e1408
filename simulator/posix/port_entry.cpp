#include "simulator/posix/port_entry.h"

#include <sys/stat.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <system_error>

namespace celldesk::simulator {
namespace {

/// A folder for this user alone; it may be there already, but then it must be his.
bool MakePrivateFolder(const std::string& path) {
  constexpr mode_t kPrivate = 0700;
  if (mkdir(path.c_str(), kPrivate) == 0) return true;
  struct stat status {};
  return lstat(path.c_str(), &status) == 0 && S_ISDIR(status.st_mode) && status.st_uid == getuid();
}

std::string BaseFolder() {
  const char* runtime = std::getenv("XDG_RUNTIME_DIR");
  if (runtime && *runtime) return std::string(runtime) + "/celldesk";
  return "/tmp/celldesk-" + std::to_string(getuid());
}

}  // namespace

std::string PortFolder() { return BaseFolder() + "/ports"; }

bool PortEntry::Place(const std::string& name, const std::string& device) {
  if (!MakePrivateFolder(BaseFolder()) || !MakePrivateFolder(PortFolder())) return false;
  const std::string path = PortFolder() + '/' + name;
  const std::string fresh = path + '.' + std::to_string(getpid());
  unlink(fresh.c_str());
  if (symlink(device.c_str(), fresh.c_str()) != 0) return false;
  if (rename(fresh.c_str(), path.c_str()) != 0) {
    unlink(fresh.c_str());
    return false;
  }
  path_ = path;
  device_ = device;
  return true;
}

void PortEntry::Remove() {
  std::error_code error;
  const bool ours = !path_.empty() && std::filesystem::read_symlink(path_, error) == device_;
  if (ours) unlink(path_.c_str());
  path_.clear();
}

}  // namespace celldesk::simulator
