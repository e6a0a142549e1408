#include "data/diacritics.h"

#include <algorithm>
#include <array>
#include <cstddef>

namespace celldesk {
namespace {

struct Replacement {
  char16_t from;
  char16_t to;
};

constexpr Replacement kReplacements[] = {
    {0x00E1, u'a'}, {0x00C1, u'A'}, {0x010D, u'c'}, {0x010C, u'C'}, {0x010F, u'd'}, {0x010E, u'D'},
    {0x00E9, u'e'}, {0x00C9, u'E'}, {0x011B, u'e'}, {0x011A, u'E'}, {0x00ED, u'i'}, {0x00CD, u'I'},
    {0x013E, u'l'}, {0x013D, u'L'}, {0x0148, u'n'}, {0x0147, u'N'}, {0x00F3, u'o'}, {0x00D3, u'O'},
    {0x00F4, u'o'}, {0x00D4, u'O'}, {0x0159, u'r'}, {0x0158, u'R'}, {0x0161, u's'}, {0x0160, u'S'},
    {0x0165, u't'}, {0x0164, u'T'}, {0x016F, u'u'}, {0x016E, u'U'}, {0x00FA, u'u'}, {0x00DA, u'U'},
    {0x00FD, u'y'}, {0x00DD, u'Y'}, {0x017E, u'z'}, {0x017D, u'Z'},
};

constexpr std::size_t kLettersEnd = 0x017F;  // one more than the last replaced

constexpr std::array<char16_t, kLettersEnd> kBaseLetters = [] {
  std::array<char16_t, kLettersEnd> letters{};
  for (std::size_t i = 0; i < letters.size(); ++i) letters[i] = static_cast<char16_t>(i);
  for (const Replacement& replacement : kReplacements) letters[replacement.from] = replacement.to;
  return letters;
}();

char16_t BaseLetter(char16_t letter) { return letter < kLettersEnd ? kBaseLetters[letter] : letter; }

}  // namespace

void DropDiacritics(std::span<char16_t> text) {
  std::transform(text.begin(), text.end(), text.begin(), BaseLetter);
}

std::u16string WithoutDiacritics(std::u16string text) {
  DropDiacritics(text);
  return text;
}

}  // namespace celldesk
