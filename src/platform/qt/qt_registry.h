#pragma once

#include <memory>
#include <string>

#include "platform/registry.h"

namespace celldesk {

class SettingsFile;

/// The registry as a readable file of the user: docs/settings.md tells its form. Every write is on the disk
/// when the call returns, and every query reads the file; windows that run side by side see each other's
/// values and never lose them. Keys stay usable when the registry object is gone; a write through a key that
/// was deleted fails.
class QtRegistry : public Registry {
 public:
  /// The file and the folders on the way to it are made by the first write.
  explicit QtRegistry(std::u16string path = DefaultPath());
  ~QtRegistry() override;

  /// "celldesk/settings.ini" in $XDG_CONFIG_HOME, else in "~/.config".
  static std::u16string DefaultPath();

  std::unique_ptr<RegistryKey> Create(RegistryRoot root, std::u16string_view path,
                                      KeyDisposition& disposition, SystemError& error) override;
  std::unique_ptr<RegistryKey> Open(RegistryRoot root, std::u16string_view path, SystemError& error) override;
  SystemError Delete(RegistryRoot root, std::u16string_view path) override;

 private:
  std::shared_ptr<SettingsFile> file_;
};

}  // namespace celldesk
