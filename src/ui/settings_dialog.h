#pragma once

#include <array>
#include <memory>

#include "config/settings_store.h"
#include "ui/framework/dialog.h"
#include "ui/framework/page_host.h"
#include "ui/general_page.h"
#include "ui/operator_page.h"
#include "ui/program_services.h"
#include "ui/sms_page.h"

namespace celldesk {

/// The settings on three pages. Opening it loads every page from the settings key, OK saves the changes of
/// each there; both by a message to each page in page order.
class SettingsDialog : public Dialog {
 public:
  static constexpr int kPages = 1000;

  explicit SettingsDialog(const ProgramServices& services);
  ~SettingsDialog() override;

  /// What OK saved, whether or not the registry took it.
  const Settings& settings() const { return settings_; }
  GeneralPage& general() { return general_; }
  OperatorPage& operators() { return operators_; }
  SmsPage& sms() { return sms_; }
  /// While the dialog runs.
  PageHost& pages() { return *pages_; }

  bool OnInitDialog(int focus, LongParameter parameter) override;
  MessageResult WindowProc(Message message, WordParameter word, LongParameter parameter) override;
  bool UpdateData(bool save) override;

 private:
  std::array<Dialog*, 3> AllPages() { return {&general_, &operators_, &sms_}; }
  void MakePages();

  ProgramServices services_;
  Settings settings_;
  GeneralPage general_;
  OperatorPage operators_;
  SmsPage sms_;
  std::unique_ptr<PageHost> pages_;
};

}  // namespace celldesk
