#include "ui/operator_page.h"

#include "ui/settings_choices.h"

namespace celldesk {
namespace {

constexpr int kTemplate = 222;
// As much as is read back. A number is shorter, but it may be pasted with words around it, which the filter
// drops only after the limit has cut.
constexpr int kCentreLimit = SettingsValue::kMaximumString - 1;

}  // namespace

OperatorPage::OperatorPage(Settings& settings, const OperatorDirectory& directory)
    : SettingsPageDialog(kTemplate, SettingsPage::kOperator, settings), directory_(directory) {}

bool OperatorPage::OnInitDialog(int /*focus*/, LongParameter /*parameter*/) {
  SetLimit(kCentre, kCentreLimit);
  SetFilter(kCentre, EditFilter::kTelephone);
  return true;
}

bool OperatorPage::UpdateData(bool save) {
  if (save) {
    settings().country = country_;
    settings().operator_name = operator_;
    settings().centre = Text(kCentre);
    return true;
  }
  country_ = settings().country;
  operator_ = settings().operator_name;
  FillTexts(*this, kCountry, directory_.Countries(), country_);
  FillTexts(*this, kOperator, directory_.Operators(country_), operator_);
  FillCentres(settings().centre);
  return true;
}

// To pick the same entry again is no change.
MessageResult OperatorPage::OnNotify(int control_id, const Notification& notification) {
  if (notification.code != NotifyCode::kChanged) return 0;
  if (control_id == kCountry && Text(kCountry) != country_) OnCountryChanged();
  if (control_id == kOperator && Text(kOperator) != operator_) OnOperatorChanged();
  return 0;
}

void OperatorPage::OnCountryChanged() {
  country_ = Text(kCountry);
  operator_.clear();
  FillTexts(*this, kOperator, directory_.Operators(country_), {});
  FillCentres({});
}

void OperatorPage::OnOperatorChanged() {
  operator_ = Text(kOperator);
  const auto centres = directory_.Centres(country_, operator_);
  FillCentres(centres.empty() ? std::u16string_view() : centres.front());
}

void OperatorPage::FillCentres(std::u16string_view stored) {
  FillTexts(*this, kCentre, directory_.Centres(country_, operator_), stored);
  SetText(kCentre, stored);
}

}  // namespace celldesk
