#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "config/settings_key.h"
#include "platform/registry.h"

namespace celldesk {

/// The program's settings, as the three pages of the settings dialog show them.
struct Settings {
  // General
  std::u16string port = u"COM1:";  ///< device name, at most five characters
  bool use_adapter = false;        ///< messages go out without the SMS centre field
  // Operator
  std::u16string centre;  ///< SMS centre number in international form
  std::u16string operator_name;
  std::u16string country;
  // Sms
  bool delivery_report = false;
  bool reply_path = false;
  std::uint32_t validity = 197;  ///< relative validity period (GSM 03.40 9.2.3.12.1); 197 is five weeks

  friend bool operator==(const Settings&, const Settings&) = default;
};

enum class SettingsPage { kGeneral, kOperator, kSms };

/// Keeps the settings in the registry of the present user. A value that is absent or cannot be read is its
/// default; a failed write is not reported. The first write makes the key. Interface thread only.
class SettingsStore {
 public:
  static constexpr std::u16string_view kPath = u"\\Software\\Corvane\\CellDesk";
  /// Names of the column layouts.
  static constexpr std::u16string_view kAddressColumns = u"AddressCols";
  static constexpr std::u16string_view kInboxColumns = u"InboxCols";
  static constexpr std::u16string_view kOutboxColumns = u"OutboxCols";

  /// The registry is borrowed for the object's life.
  explicit SettingsStore(Registry& registry) : registry_(registry) {}

  /// Every page.
  Settings Load() const;
  void Save(const Settings& settings) const;

  /// The fields of one page, to and from the key that the dialog opened.
  static void LoadPage(SettingsPage page, const SettingsKey& key, Settings& settings);
  static void SavePage(SettingsPage page, const SettingsKey& key, const Settings& settings);
  /// The same, but a field that is as it was `before` leaves what is stored, which another window may have
  /// changed, and takes it over. It is written where nothing is stored that can be read.
  static void SaveChanges(SettingsPage page, const SettingsKey& key, Settings& settings,
                          const Settings& before);

  /// The stored widths of a list with `count` columns; empty when none are stored for exactly that many.
  std::vector<std::uint16_t> LoadColumnWidths(std::u16string_view name, std::size_t count) const;
  void SaveColumnWidths(std::u16string_view name, const std::vector<std::uint16_t>& widths) const;

 private:
  SettingsKey KeyToRead() const;
  SettingsKey KeyToWrite() const;

  Registry& registry_;
};

}  // namespace celldesk
