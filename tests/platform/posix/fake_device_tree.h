#pragma once

#include <filesystem>
#include <string>

#include "platform/posix/port_paths.h"
#include "support/temporary_folder.h"

namespace celldesk {

/// A device tree, device files and a folder of port links that a test fills.
class FakeDeviceTree {
 public:
  struct Usb {
    std::string socket = "1-2";
    std::string serial = {};
    std::string manufacturer = {};
    std::string product = {};
    std::string interface_number = "00";
  };

  PortPaths Paths() const { return {root_.path() / "sys", root_.path() / "dev", root_.path() / "links"}; }

  /// A UART of the serial driver; type 0 is one that is not there.
  void AddUart(const std::string& name, const std::string& type) {
    AddNode("tty", name, "devices/platform/serial8250/" + name);
    root_.Write("sys/class/tty/" + name + "/type", type + "\n");
  }
  void AddUsb(const std::string& name, const Usb& usb) {
    const std::string device = "devices/pci0000:00/usb1/" + usb.socket;
    const std::string interface = device + "/" + usb.socket + ":1." + usb.interface_number;
    Attribute(device, "idVendor", "12d1");
    Attribute(device, "idProduct", "1003");
    if (!usb.serial.empty()) Attribute(device, "serial", usb.serial);
    if (!usb.manufacturer.empty()) Attribute(device, "manufacturer", usb.manufacturer);
    if (!usb.product.empty()) Attribute(device, "product", usb.product);
    Attribute(interface, "bInterfaceNumber", usb.interface_number);
    AddNode("tty", name, interface + "/" + name);
  }
  /// A channel of a built-in modem.
  void AddModemChannel(const std::string& name, const std::string& type) {
    AddNode("wwan", name, "devices/pci0000:00/wwan/" + name);
    root_.Write("sys/class/wwan/" + name + "/type", type + "\n");
  }
  /// A node without hardware: a console, a Bluetooth line that is not connected.
  void AddBare(const std::string& name) {
    std::filesystem::create_directories(root_.path() / "sys/class/tty" / name);
    root_.Write("dev/" + name, "");
  }
  void Remove(const std::string& name) {
    std::filesystem::remove_all(root_.path() / "sys/class/tty" / name);
    std::filesystem::remove_all(root_.path() / "dev" / name);
  }

  void AddLink(const std::string& name, const std::filesystem::path& target) {
    std::filesystem::create_directories(root_.path() / "links");
    std::filesystem::create_symlink(target, root_.path() / "links" / name);
  }
  void RemoveLink(const std::string& name) { std::filesystem::remove(root_.path() / "links" / name); }
  /// A file that a link may lead to.
  std::filesystem::path AddDeviceFile(const std::string& name) {
    root_.Write("dev/" + name, "");
    return root_.path() / "dev" / name;
  }

 private:
  void AddNode(const std::string& device_class, const std::string& name, const std::string& place) {
    std::filesystem::create_directories(root_.path() / "sys" / place);
    const auto node = root_.path() / "sys/class" / device_class / name;
    std::filesystem::create_directories(node);
    std::filesystem::create_symlink(root_.path() / "sys" / place, node / "device");
    root_.Write("dev/" + name, "");
  }
  void Attribute(const std::string& folder, const std::string& name, const std::string& value) {
    root_.Write("sys/" + folder + "/" + name, value + "\n");
  }

  TemporaryFolder root_;
};

}  // namespace celldesk
