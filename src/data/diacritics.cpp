#include "data/diacritics.h"

#include <algorithm>

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

constexpr char16_t kFirstReplaced = 0x00C1;

char16_t BaseLetter(char16_t letter) {
  if (letter < kFirstReplaced) return letter;
  const auto* const end = std::end(kReplacements);
  const auto* const found = std::find_if(std::begin(kReplacements), end,
                                         [letter](const Replacement& r) { return r.from == letter; });
  return found == end ? letter : found->to;
}

}  // namespace

std::u16string WithoutDiacritics(std::u16string text) {
  std::transform(text.begin(), text.end(), text.begin(), BaseLetter);
  return text;
}

}  // namespace celldesk
