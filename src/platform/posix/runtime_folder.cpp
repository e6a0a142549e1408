#include "platform/posix/runtime_folder.h"

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

RuntimeFolder RuntimeFolder::OfThisUser() {
  const char* runtime = std::getenv("XDG_RUNTIME_DIR");
  if (runtime && *runtime) return {std::filesystem::path(runtime) / "celldesk"};
  return {"/tmp/celldesk-" + std::to_string(::getuid()), true};
}

}  // namespace celldesk
