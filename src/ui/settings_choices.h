#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "ui/framework/dialog.h"

namespace celldesk {

/// One line of a choice list: what is shown and the value kept.
struct SettingsChoice {
  std::u16string text;
  std::uint32_t value;
};

/// Fills the choice list `id` and selects `value`. A value that is none of the choices is shown as `foreign`,
/// first in the list, and so stays until the user picks another.
void FillChoices(Dialog& dialog, int id, const std::vector<SettingsChoice>& choices, std::uint32_t value,
                 std::u16string_view foreign);
/// The value of the selected choice; `value` when none is selected.
std::uint32_t ChosenValue(const Dialog& dialog, int id, std::uint32_t value);

/// Fills the choice list `id` with texts and selects the stored one. A stored text that is none of them is
/// shown as it is, first in the list; an empty one selects nothing.
void FillTexts(Dialog& dialog, int id, const std::vector<std::u16string>& texts, std::u16string_view stored);

}  // namespace celldesk
