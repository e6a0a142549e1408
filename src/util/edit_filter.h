#pragma once

#include <string_view>

namespace celldesk {

/// Which characters a numeric edit field takes.
enum class EditFilter { kNone, kDigits, kTelephone, kDecimal };

/// The filter's set: "0123456789", "01234567890+-" or "01234567890+-.,"; empty for kNone.
std::u16string_view AllowedCharacters(EditFilter filter);

/// True when a typed `character` reaches the field: control characters (below 32, such as backspace) always
/// do.
bool PassesFilter(EditFilter filter, char16_t character);

}  // namespace celldesk
