#include "platform/posix/port_paths.h"

#include <sys/stat.h>
#include <unistd.h>

#include <cstdlib>
#include <string>

namespace celldesk {

bool IsPrivateFolder(const std::filesystem::path& folder) {
  struct stat status {};
  return ::lstat(folder.c_str(), &status) == 0 && S_ISDIR(status.st_mode) && status.st_uid == ::getuid() &&
         (status.st_mode & 0077) == 0;
}

PortPaths PortPaths::OfThisMachine() {
  const char* runtime = std::getenv("XDG_RUNTIME_DIR");
  if (runtime && *runtime) return {"/sys", "/dev", std::filesystem::path(runtime) / "celldesk" / "ports"};
  return {"/sys", "/dev", "/tmp/celldesk-" + std::to_string(::getuid()) + "/ports", true};
}

}  // namespace celldesk
