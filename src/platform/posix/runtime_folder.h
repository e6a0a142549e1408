#pragma once

#include <filesystem>

namespace celldesk {

/// The user's folder for what lives no longer than the session.
struct RuntimeFolder {
  std::filesystem::path path;
  /// The folder lies where anybody may have made it: it counts only while it is private.
  bool in_shared_place = false;

  /// "celldesk" in $XDG_RUNTIME_DIR; without that variable "/tmp/celldesk-UID", in a shared place.
  static RuntimeFolder OfThisUser();
};

/// True when `folder` is a folder (no symlink), the user's, and closed to everybody else.
bool IsPrivateFolder(const std::filesystem::path& folder);

}  // namespace celldesk
