#pragma once

#include "config/settings_store.h"
#include "ui/framework/dialog.h"

namespace celldesk {

/// A page of the settings dialog. It answers two messages, whose parameter is the opened key (a pointer to a
/// SettingsKey): kLoadSettings reads the page's settings and shows them, kSaveSettings writes what the user
/// changed and what is not stored yet. A page's UpdateData copies between its controls and settings().
class SettingsPageDialog : public Dialog {
 public:
  /// `settings` are shared by the pages, each has its own fields; borrowed for the page's life.
  SettingsPageDialog(int template_number, SettingsPage page, Settings& settings)
      : Dialog(template_number), page_(page), settings_(settings) {}

  MessageResult WindowProc(Message message, WordParameter word, LongParameter parameter) override;

 protected:
  Settings& settings() { return settings_; }

 private:
  SettingsPage page_;
  Settings& settings_;
  Settings loaded_;  // the page's fields as they were shown
};

}  // namespace celldesk
