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

/// Writes the fields of a page; with `before`, one that is as it was then only where no good value is stored.
/// A field that is not written takes over what is stored.
class PageWriter {
 public:
  PageWriter(const SettingsKey& key, Settings& settings, const Settings* before)
      : key_(key), settings_(settings), before_(before) {}

  void Write(SettingsPage page) {
    switch (page) {
      case SettingsPage::kGeneral:
        PutText(kPort, &Settings::port, kPortBuffer);
        PutFlag(kAdapter, &Settings::use_adapter);
        break;
      case SettingsPage::kOperator:
        PutText(kCentre, &Settings::centre);
        PutText(kOperator, &Settings::operator_name);
        PutText(kCountry, &Settings::country);
        break;
      case SettingsPage::kSms:
        PutFlag(kDeliveryReport, &Settings::delivery_report);
        PutFlag(kReplyPath, &Settings::reply_path);
        PutNumber(kValidity, &Settings::validity);
        break;
    }
  }

 private:
  void PutText(std::u16string_view name, std::u16string Settings::*field,
               std::size_t maximum = SettingsValue::kMaximumString) {
    SettingsValue value = key_.Value(name);
    const std::u16string stored = value.GetString({}, maximum);
    if (!Keep(field, stored, value.status() == kErrorSuccess)) value.SetString(settings_.*field);
  }
  void PutFlag(std::u16string_view name, bool Settings::*field) {
    SettingsValue value = key_.Value(name);
    const std::uint32_t stored = value.GetNumber(0);
    const bool is_good = value.status() == kErrorSuccess && stored <= 1;
    if (!Keep(field, stored != 0, is_good)) value.SetFlag(settings_.*field);
  }
  void PutNumber(std::u16string_view name, std::uint32_t Settings::*field) {
    SettingsValue value = key_.Value(name);
    const std::uint32_t stored = value.GetNumber(0);
    if (!Keep(field, stored, value.status() == kErrorSuccess)) value.SetNumber(settings_.*field);
  }
  template <typename T>
  bool Keep(T Settings::*field, const T& stored, bool is_good) {
    if (before_ == nullptr || !is_good || settings_.*field != before_->*field) return false;
    settings_.*field = stored;
    return true;
  }

  const SettingsKey& key_;
  Settings& settings_;
  const Settings* before_;
};

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
  Settings all = settings;
  PageWriter(key, all, nullptr).Write(page);
}

void SettingsStore::SaveChanges(SettingsPage page, const SettingsKey& key, Settings& settings,
                                const Settings& before) {
  PageWriter(key, settings, &before).Write(page);
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
