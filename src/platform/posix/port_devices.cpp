#include "platform/posix/port_devices.h"

#include <algorithm>
#include <system_error>
#include <utility>

#include "platform/posix/runtime_folder.h"
#include "platform/posix/usb_device.h"

namespace celldesk {
namespace {

namespace fs = std::filesystem;

// Entries of a folder in the order a person expects: ttyUSB2 before ttyUSB10.
std::vector<std::string> NamesIn(const fs::path& folder) {
  std::vector<std::string> names;
  std::error_code error;
  for (fs::directory_iterator entry(folder, error), end; !error && entry != end; entry.increment(error))
    names.push_back(entry->path().filename().string());
  std::sort(names.begin(), names.end(), [](const std::string& left, const std::string& right) {
    const auto stem = [](const std::string& name) {
      return std::string_view(name).substr(0, name.find_last_not_of("0123456789") + 1);
    };
    if (stem(left) != stem(right)) return stem(left) < stem(right);
    return left.size() != right.size() ? left.size() < right.size() : left < right;
  });
  return names;
}

bool Exists(const fs::path& path) {
  std::error_code error;
  return fs::exists(path, error);
}

// A UART driver lists more ports than the machine has; those that were not found have type 0.
bool HasHardware(const fs::path& node, const std::string& name) {
  if (name.starts_with("rfcomm")) return true;
  return Exists(node / "device") && ReadAttribute(node / "type") != "0";
}

bool IsTaken(const std::string& stable_id, const std::vector<PortDevice>& ports) {
  return std::any_of(ports.begin(), ports.end(),
                     [&](const PortDevice& port) { return port.stable_id == stable_id; });
}

void AddDevice(const PortPaths& paths, const fs::path& node, const std::string& name,
               std::vector<PortDevice>& ports) {
  std::error_code error;
  const fs::path place = fs::canonical(Exists(node / "device") ? node / "device" : node, error);
  const auto usb = FindUsbDevice(place, paths.system);
  PortDevice port{(paths.devices / name).string(), "", ""};
  if (usb) port.stable_id = usb->StableId();
  // Some makers give all their devices one serial number.
  if (port.stable_id.empty() || IsTaken(port.stable_id, ports))
    port.stable_id = "path:" + (usb ? usb->interface : place).lexically_relative(paths.system).string();
  if (usb && !usb->Title().empty()) port.display_text = usb->Title() + " (" + name + ")";
  ports.push_back(std::move(port));
}

void AddDevices(const PortPaths& paths, const char* device_class,
                bool (*wanted)(const fs::path&, const std::string&), std::vector<PortDevice>& ports) {
  const fs::path folder = paths.system / "class" / device_class;
  for (const std::string& name : NamesIn(folder))
    if (wanted(folder / name, name) && Exists(paths.devices / name))
      AddDevice(paths, folder / name, name, ports);
}

// Built-in mobile modems have several channels; AT commands go through one of this type.
bool TakesCommands(const fs::path& node, const std::string&) { return ReadAttribute(node / "type") == "AT"; }

void AddLinks(const fs::path& folder, std::vector<PortDevice>& ports) {
  for (const std::string& name : NamesIn(folder)) {
    std::error_code error;
    if (!fs::is_symlink(folder / name, error)) continue;
    const fs::path target = fs::canonical(folder / name, error);
    if (!error) ports.push_back({target.string(), "link:" + name, name});
  }
}

}  // namespace

std::vector<PortDevice> FindPortDevices(const PortPaths& paths) {
  std::vector<PortDevice> ports;
  const bool trusted = !paths.links_in_shared_place || IsPrivateFolder(paths.links.parent_path());
  if (!paths.links.empty() && trusted) AddLinks(paths.links, ports);
  AddDevices(paths, "tty", HasHardware, ports);
  AddDevices(paths, "wwan", TakesCommands, ports);
  return ports;
}

}  // namespace celldesk
