#include "ui/settings_choices.h"

#include <algorithm>

namespace celldesk {

void FillChoices(Dialog& dialog, int id, const std::vector<SettingsChoice>& choices, std::uint32_t value,
                 std::u16string_view foreign) {
  std::vector<SettingsChoice> listed = choices;
  const auto is_value = [&](const SettingsChoice& choice) { return choice.value == value; };
  if (std::none_of(listed.begin(), listed.end(), is_value))
    listed.insert(listed.begin(), {std::u16string(foreign), value});
  dialog.ClearChoices(id);
  for (const SettingsChoice& choice : listed) dialog.AddChoice(id, choice.text, choice.value);
  const auto selected = std::find_if(listed.begin(), listed.end(), is_value);
  dialog.SelectChoice(id, static_cast<int>(selected - listed.begin()));
}

std::uint32_t ChosenValue(const Dialog& dialog, int id, std::uint32_t value) {
  const int selected = dialog.SelectedChoice(id);
  return selected < 0 ? value : static_cast<std::uint32_t>(dialog.ChoiceData(id, selected));
}

void FillTexts(Dialog& dialog, int id, const std::vector<std::u16string>& texts, std::u16string_view stored) {
  const auto found = std::find(texts.begin(), texts.end(), stored);
  const bool is_foreign = !stored.empty() && found == texts.end();
  dialog.ClearChoices(id);
  if (is_foreign) dialog.AddChoice(id, stored, 0);
  for (const std::u16string& text : texts) dialog.AddChoice(id, text, 0);
  // A list selects its first entry by itself.
  const bool is_listed = !stored.empty() && found != texts.end();
  dialog.SelectChoice(id, is_foreign ? 0 : is_listed ? static_cast<int>(found - texts.begin()) : -1);
}

}  // namespace celldesk
