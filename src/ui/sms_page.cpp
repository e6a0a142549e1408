#include "ui/sms_page.h"

#include "pdu/validity.h"
#include "ui/resources/resources.h"
#include "ui/settings_choices.h"

namespace celldesk {
namespace {

constexpr int kTemplate = 223;

}  // namespace

SmsPage::SmsPage(Settings& settings, const Locale& locale)
    : SettingsPageDialog(kTemplate, SettingsPage::kSms, settings), locale_(locale) {}

bool SmsPage::OnInitDialog(int /*focus*/, LongParameter /*parameter*/) {
  SetChecked(kManually, true);
  return true;
}

bool SmsPage::UpdateData(bool save) {
  if (save) {
    settings().delivery_report = IsChecked(kDeliveryReport);
    settings().reply_path = IsChecked(kReplyPath);
    settings().validity = ChosenValue(*this, kValidity, settings().validity);
    return true;
  }
  SetChecked(kDeliveryReport, settings().delivery_report);
  SetChecked(kReplyPath, settings().reply_path);
  FillValidity();
  return true;
}

// A message takes the lowest octet of the stored number (GSM 03.40 9.2.3.12.1), so that is what is told.
void SmsPage::FillValidity() {
  std::vector<SettingsChoice> choices;
  for (const ValidityPreset& preset : kValidityPresets)
    choices.push_back({LoadString(preset.text), preset.value});
  const auto octet = static_cast<std::uint8_t>(settings().validity);
  FillChoices(*this, kValidity, choices, settings().validity,
              RelativeValidityText(octet, locale_, LoadString));
}

}  // namespace celldesk
