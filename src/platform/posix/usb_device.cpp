#include "platform/posix/usb_device.h"

#include <algorithm>
#include <fstream>
#include <system_error>

namespace celldesk {
namespace {

std::string Lowered(std::string text) {
  std::transform(text.begin(), text.end(), text.begin(),
                 [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c; });
  return text;
}

std::string FirstWord(const std::string& text) { return text.substr(0, text.find_first_of(" ,")); }

UsbDevice ReadUsbDevice(const std::filesystem::path& folder) {
  UsbDevice device;
  device.vendor_id = ReadAttribute(folder / "idVendor");
  device.product_id = ReadAttribute(folder / "idProduct");
  device.serial = ReadAttribute(folder / "serial");
  device.manufacturer = ReadAttribute(folder / "manufacturer");
  device.product = ReadAttribute(folder / "product");
  return device;
}

}  // namespace

std::string ReadAttribute(const std::filesystem::path& file) {
  std::ifstream stream(file);
  std::string line;
  std::getline(stream, line);
  const std::size_t first = line.find_first_not_of(" \t\r");
  return first == std::string::npos ? "" : line.substr(first, line.find_last_not_of(" \t\r") - first + 1);
}

std::string UsbDevice::StableId() const {
  if (serial.empty()) return "";
  return "usb:" + vendor_id + ":" + product_id + ":" + serial + ":" + interface_number;
}

std::string UsbDevice::Title() const {
  if (product.empty() || manufacturer.empty()) return product + manufacturer;
  const std::string maker = FirstWord(manufacturer);
  const bool named = Lowered(product).find(Lowered(maker)) != std::string::npos;
  return named ? product : maker + " " + product;
}

std::optional<UsbDevice> FindUsbDevice(const std::filesystem::path& place, const std::filesystem::path& top) {
  std::filesystem::path interface;
  std::error_code error;
  for (auto folder = place; folder != top && folder.has_relative_path(); folder = folder.parent_path()) {
    if (interface.empty() && std::filesystem::exists(folder / "bInterfaceNumber", error)) interface = folder;
    if (!std::filesystem::exists(folder / "idVendor", error)) continue;
    UsbDevice device = ReadUsbDevice(folder);
    device.interface = interface.empty() ? folder : interface;
    device.interface_number = ReadAttribute(interface / "bInterfaceNumber");
    return device;
  }
  return std::nullopt;
}

}  // namespace celldesk
