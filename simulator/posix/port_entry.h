#pragma once

#include <string>

namespace celldesk::simulator {

/// The folder in which programs of this user list their ports: one symbolic link per port, named for display,
/// leading to the device. "celldesk/ports" in the runtime directory, or in a private one below /tmp.
std::string PortFolder();

/// One port in that folder, there as long as this object.
class PortEntry {
 public:
  PortEntry() = default;
  PortEntry(const PortEntry&) = delete;
  PortEntry& operator=(const PortEntry&) = delete;
  ~PortEntry() { Remove(); }

  /// Lists `device` under `name`, in place of an entry of that name. False when the folder cannot be had.
  [[nodiscard]] bool Place(const std::string& name, const std::string& device);
  /// Takes the entry away, unless another program has meanwhile put its own there.
  void Remove();

 private:
  std::string path_;
  std::string device_;
};

}  // namespace celldesk::simulator
