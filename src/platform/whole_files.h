#pragma once

#include <cstddef>
#include <filesystem>
#include <string>
#include <string_view>

#include "platform/system_error.h"

namespace celldesk {

/// Small files that are read and written whole. Paths are the system's own. Interface thread only.
class WholeFiles {
 public:
  virtual ~WholeFiles() = default;
  /// Reads what a regular file holds now into `bytes`, which is empty after a failure. Anything else (a
  /// folder, a device, a pipe) is refused with kErrorAccessDenied at once, a file of more than `limit` bytes
  /// with kErrorMoreData.
  virtual SystemError Read(const std::filesystem::path& path, std::size_t limit, std::string& bytes) = 0;
  /// Makes a file that was not there, whole or not at all, whenever the program or the machine stops. The
  /// bytes are on the medium when the call returns. kErrorFileExists, and nothing changed, when it is there
  /// already.
  virtual SystemError Add(const std::filesystem::path& path, std::string_view bytes) = 0;
};

}  // namespace celldesk
