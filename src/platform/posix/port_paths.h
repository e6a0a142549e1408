#pragma once

#include <filesystem>

namespace celldesk {

/// Where ports are looked for.
struct PortPaths {
  std::filesystem::path system;   ///< the kernel's device tree, "/sys"
  std::filesystem::path devices;  ///< the device files, "/dev"
  std::filesystem::path links;    ///< one symlink per port: its name is what the user sees; empty for none
  /// `links` lies in a folder that anybody may have made: it counts only while that one is private.
  bool links_in_shared_place = false;

  /// The machine's own. `links` is "celldesk/ports" in $XDG_RUNTIME_DIR; without that variable
  /// "/tmp/celldesk-UID/ports", in a shared place.
  static PortPaths OfThisMachine();
};

}  // namespace celldesk
