#pragma once

#include <string>

#include "config/operator_directory.h"
#include "ui/settings_page_dialog.h"

namespace celldesk {

/// The page "Operator": country, operator and SMS centre, each list following the one before it. A stored
/// text that the directory does not have is shown as stored, first in its list; a centre may be typed, too.
class OperatorPage : public SettingsPageDialog {
 public:
  static constexpr int kCountry = 1033, kOperator = 1036, kCentre = 1037;

  OperatorPage(Settings& settings, const OperatorDirectory& directory);

  bool OnInitDialog(int focus, LongParameter parameter) override;
  MessageResult OnNotify(int control_id, const Notification& notification) override;
  bool UpdateData(bool save) override;

 private:
  void OnCountryChanged();
  void OnOperatorChanged();
  void FillCentres(std::u16string_view stored);

  OperatorDirectory directory_;
  std::u16string country_;
  std::u16string operator_;
};

}  // namespace celldesk
