#pragma once

#include "ui/settings_page_dialog.h"

namespace celldesk {

class Locale;

/// The page "Sms": delivery report, reply path, validity, and what becomes of messages in the SIM. A validity
/// that is none of the choices is shown in words and kept until the user picks another. The choice about the
/// SIM is shown and not stored.
class SmsPage : public SettingsPageDialog {
 public:
  static constexpr int kDeliveryReport = 1010, kReplyPath = 1011, kValidity = 1012;
  static constexpr int kManually = 1013, kAfterMove = 1014, kAutomatically = 1015;

  /// `locale` is borrowed for the page's life.
  SmsPage(Settings& settings, const Locale& locale);

  bool OnInitDialog(int focus, LongParameter parameter) override;
  bool UpdateData(bool save) override;

 private:
  void FillValidity();

  const Locale& locale_;
};

}  // namespace celldesk
