#include "ui/settings_page_dialog.h"

namespace celldesk {

MessageResult SettingsPageDialog::WindowProc(Message message, WordParameter /*word*/,
                                             LongParameter parameter) {
  if (message != Message::kLoadSettings && message != Message::kSaveSettings) return 0;
  const bool save = message == Message::kSaveSettings;
  const auto& key = *reinterpret_cast<const SettingsKey*>(parameter);
  if (!save) SettingsStore::LoadPage(page_, key, settings_);
  UpdateData(save);
  if (save) SettingsStore::SavePage(page_, key, settings_);
  return 1;
}

}  // namespace celldesk
