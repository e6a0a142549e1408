#include "config/settings_store.h"

namespace celldesk {
namespace {

constexpr std::u16string_view kPort = u"Port";
constexpr std::u16string_view kAdapter = u"DI27";
constexpr std::u16string_view kCentre = u"SMSC";
constexpr std::u16string_view kOperator = u"Operator";
constexpr std::u16string_view kCountry = u"Country";
constexpr std::u16string_view kDeliveryReport = u"DeliveryReport";
constexpr std::u16string_view kReplyPath = u"ReplyPath";
constexpr std::u16string_view kValidity = u"Validity";

constexpr std::size_t kPortBuffer = 6;
constexpr SettingsPage kPages[] = {SettingsPage::kGeneral, SettingsPage::kOperator, SettingsPage::kSms};

}  // namespace

Settings SettingsStore::Load() const {
  Settings settings;
  const SettingsKey key = KeyToRead();
  for (const SettingsPage page : kPages) LoadPage(page, key, settings);
  return settings;
}

void SettingsStore::Save(const Settings& settings) const {
  const SettingsKey key = KeyToWrite();
  for (const SettingsPage page : kPages) SavePage(page, key, settings);
}

void SettingsStore::LoadPage(SettingsPage page, const SettingsKey& key, Settings& settings) {
  const Settings defaults;
  switch (page) {
    case SettingsPage::kGeneral:
      settings.port = key.Value(kPort).GetString(defaults.port, kPortBuffer);
      settings.use_adapter = key.Value(kAdapter).GetFlag();
      break;
    case SettingsPage::kOperator:
      settings.centre = key.Value(kCentre).GetString();
      settings.operator_name = key.Value(kOperator).GetString();
      settings.country = key.Value(kCountry).GetString();
      break;
    case SettingsPage::kSms:
      settings.delivery_report = key.Value(kDeliveryReport).GetFlag();
      settings.reply_path = key.Value(kReplyPath).GetFlag();
      settings.validity = key.Value(kValidity).GetNumber(defaults.validity);
      break;
  }
}

void SettingsStore::SavePage(SettingsPage page, const SettingsKey& key, const Settings& settings) {
  switch (page) {
    case SettingsPage::kGeneral:
      key.Value(kPort).SetString(settings.port);
      key.Value(kAdapter).SetFlag(settings.use_adapter);
      break;
    case SettingsPage::kOperator:
      key.Value(kCentre).SetString(settings.centre);
      key.Value(kOperator).SetString(settings.operator_name);
      key.Value(kCountry).SetString(settings.country);
      break;
    case SettingsPage::kSms:
      key.Value(kDeliveryReport).SetFlag(settings.delivery_report);
      key.Value(kReplyPath).SetFlag(settings.reply_path);
      key.Value(kValidity).SetNumber(settings.validity);
      break;
  }
}

std::vector<std::uint16_t> SettingsStore::LoadColumnWidths(std::u16string_view name,
                                                           std::size_t count) const {
  std::vector<std::uint8_t> bytes;
  const SettingsKey key = KeyToRead();
  if (key.Value(name).GetBinary(bytes, 2 * count) != kErrorSuccess || bytes.size() != 2 * count) return {};
  std::vector<std::uint16_t> widths;
  for (std::size_t i = 0; i < bytes.size(); i += 2) {
    widths.push_back(static_cast<std::uint16_t>(bytes[i] | bytes[i + 1] << 8));
  }
  return widths;
}

void SettingsStore::SaveColumnWidths(std::u16string_view name,
                                     const std::vector<std::uint16_t>& widths) const {
  std::vector<std::uint8_t> bytes;
  for (const std::uint16_t width : widths) {
    bytes.push_back(static_cast<std::uint8_t>(width & 0xFF));
    bytes.push_back(static_cast<std::uint8_t>(width >> 8));
  }
  KeyToWrite().Value(name).SetBinary(bytes);
}

// A first start would wait for the disk if reading made the key.
SettingsKey SettingsStore::KeyToRead() const {
  SettingsKey key(registry_);
  key.Open(RegistryRoot::kCurrentUser, kPath);
  return key;
}

SettingsKey SettingsStore::KeyToWrite() const {
  SettingsKey key(registry_);
  key.Create(RegistryRoot::kCurrentUser, kPath);
  return key;
}

}  // namespace celldesk
