#include "util/edit_filter.h"

namespace celldesk {

std::u16string_view AllowedCharacters(EditFilter filter) {
  switch (filter) {
    case EditFilter::kDigits:
      return u"0123456789";
    case EditFilter::kTelephone:
      return u"01234567890+-";
    case EditFilter::kDecimal:
      return u"01234567890+-.,";
    case EditFilter::kNone:
      break;
  }
  return {};
}

bool PassesFilter(EditFilter filter, char16_t character) {
  if (filter == EditFilter::kNone || character < 32) return true;
  return AllowedCharacters(filter).find(character) != std::u16string_view::npos;
}

}  // namespace celldesk
