#include "platform/posix/posix_port_list.h"

#include <set>
#include <utility>

#include "platform/posix/port_devices.h"
#include "util/text.h"

namespace celldesk {
namespace {

constexpr std::u16string_view kPortsPath = u"\\Software\\Corvane\\CellDesk\\Ports";
constexpr int kMostPorts = 9;

using Owners = std::map<std::u16string, std::u16string>;

std::u16string PortName(int number) {
  return u"COM" + std::u16string(1, static_cast<char16_t>(u'0' + number)) + u":";
}

std::u16string NameOf(const std::u16string& stable_id, const Owners& owners) {
  for (const auto& [name, owner] : owners)
    if (owner == stable_id) return name;
  return {};
}

std::u16string NameForNew(const Owners& owners, const std::set<std::u16string>& present) {
  for (int number = 1; number <= kMostPorts; ++number)
    if (!owners.contains(PortName(number))) return PortName(number);
  for (int number = kMostPorts; number >= 1; --number)
    if (!present.contains(owners.at(PortName(number)))) return PortName(number);
  return {};
}

std::u16string TextOf(const RegistryData& data) {
  std::u16string text;
  if (data.type != RegistryType::kString) return text;
  for (std::size_t i = 0; i + 1 < data.bytes.size(); i += 2) {
    const auto unit = static_cast<char16_t>(data.bytes[i] | (data.bytes[i + 1] << 8));
    if (unit == u'\0') break;
    text += unit;
  }
  return text;
}

RegistryData DataOf(std::u16string_view text) {
  RegistryData data;
  for (char16_t unit : text) {
    data.bytes.push_back(static_cast<std::uint8_t>(unit & 0xFF));
    data.bytes.push_back(static_cast<std::uint8_t>(unit >> 8));
  }
  data.bytes.insert(data.bytes.end(), {0, 0});
  return data;
}

PortInfo Describe(const PortDevice& device, const std::u16string& name) {
  const std::u16string text = FromUtf8(device.display_text);
  return {name, text.empty() ? name : text, FromUtf8(device.device), FromUtf8(device.stable_id)};
}

}  // namespace

PosixPortList::PosixPortList(Registry& registry, PortPaths paths)
    : registry_(registry), paths_(std::move(paths)) {}

void PosixPortList::LoadNames() {
  SystemError error = kErrorSuccess;
  const auto key = registry_.Open(RegistryRoot::kCurrentUser, kPortsPath, error);
  for (int number = 1; key && number <= kMostPorts; ++number) {
    const auto data = key->Query(PortName(number));
    if (data && !TextOf(*data).empty()) owners_[PortName(number)] = TextOf(*data);
  }
}

void PosixPortList::StoreName(const std::u16string& name, const std::u16string& stable_id) {
  owners_[name] = stable_id;
  KeyDisposition disposition;
  SystemError error = kErrorSuccess;
  const auto key = registry_.Create(RegistryRoot::kCurrentUser, kPortsPath, disposition, error);
  if (key) (void)key->Set(name, DataOf(stable_id));
}

std::vector<PortInfo> PosixPortList::ActivePorts() {
  LoadNames();
  const std::vector<PortDevice> devices = FindPortDevices(paths_);
  std::set<std::u16string> present;
  for (const PortDevice& device : devices) present.insert(FromUtf8(device.stable_id));

  std::map<std::u16string, PortInfo> ports;
  for (const PortDevice& device : devices) {
    const std::u16string stable_id = FromUtf8(device.stable_id);
    std::u16string name = NameOf(stable_id, owners_);
    if (name.empty()) {
      name = NameForNew(owners_, present);
      if (name.empty()) continue;
      StoreName(name, stable_id);
    }
    ports.emplace(name, Describe(device, name));
  }
  std::vector<PortInfo> active;
  for (auto& [name, port] : ports) active.push_back(std::move(port));
  return active;
}

}  // namespace celldesk
