#pragma once

#include <span>
#include <string>

namespace celldesk {

/// `text` with the Czech and Slovak letters with diacritics, which few phones know, turned into their base
/// letters; every other character stays.
std::u16string WithoutDiacritics(std::u16string text);

/// The same in `text` itself.
void DropDiacritics(std::span<char16_t> text);

}  // namespace celldesk
