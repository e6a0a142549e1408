#include "ui/settings_page_dialog.h"

namespace celldesk {

MessageResult SettingsPageDialog::WindowProc(Message message, WordParameter /*word*/,
                                             LongParameter parameter) {
  if (message != Message::kLoadSettings && message != Message::kSaveSettings) return 0;
  const bool save = message == Message::kSaveSettings;
  const auto& key = *reinterpret_cast<const SettingsKey*>(parameter);
  if (!save) {
    SettingsStore::LoadPage(page_, key, settings_);
    loaded_ = settings_;
  }
  UpdateData(save);
  if (save) SettingsStore::SaveChanges(page_, key, settings_, loaded_);
  return 1;
}

}  // namespace celldesk
