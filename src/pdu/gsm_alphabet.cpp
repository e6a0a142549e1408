#include "pdu/gsm_alphabet.h"

#include <array>

namespace celldesk {
namespace {

constexpr std::array<char16_t, 128> kGsmAlphabet = {
    u'@',      u'\u00A3', u'$',      u'\u00A5', u'\u00E8', u'\u00E9', u'\u00F9', u'\u00EC',  // 0x00
    u'\u00F2', u'\u00C7', u'\n',     u'\u00D8', u'\u00F8', u'\r',     u'\u00C5', u'\u00E5',  // 0x08
    u'\u0394', u'_',      u'\u03A6', u'\u0393', u'\u039B', u'\u03A9', u'\u03A0', u'\u03A8',  // 0x10
    u'\u03A3', u'\u0398', u'\u039E', u'\u00B9', u'\u00C6', u'\u00E6', u'\u00DF', u'\u00C9',  // 0x18
    u' ',      u'!',      u'"',      u'#',      u'\u00A4', u'%',      u'&',      u'\'',      // 0x20
    u'(',      u')',      u'*',      u'+',      u',',      u'-',      u'.',      u'/',       // 0x28
    u'0',      u'1',      u'2',      u'3',      u'4',      u'5',      u'6',      u'7',       // 0x30
    u'8',      u'9',      u':',      u';',      u'<',      u'=',      u'>',      u'?',       // 0x38
    u'\u00A1', u'A',      u'B',      u'C',      u'D',      u'E',      u'F',      u'G',       // 0x40
    u'H',      u'I',      u'J',      u'K',      u'L',      u'M',      u'N',      u'O',       // 0x48
    u'P',      u'Q',      u'R',      u'S',      u'T',      u'U',      u'V',      u'W',       // 0x50
    u'X',      u'Y',      u'Z',      u'\u00C4', u'\u00D6', u'\u00D1', u'\u00DC', u'\u00A7',  // 0x58
    u'\u00BF', u'a',      u'b',      u'c',      u'd',      u'e',      u'f',      u'g',       // 0x60
    u'h',      u'i',      u'j',      u'k',      u'l',      u'm',      u'n',      u'o',       // 0x68
    u'p',      u'q',      u'r',      u's',      u't',      u'u',      u'v',      u'w',       // 0x70
    u'x',      u'y',      u'z',      u'\u00E4', u'\u00F6', u'\u00F1', u'\u00FC', u'\u00E0',  // 0x78
};

// Every byte, those of 0x80 and more sign-extended.
constexpr auto kWideOfByte = [] {
  std::array<char16_t, 256> table{};
  for (std::size_t byte = 0; byte < table.size(); ++byte) {
    table[byte] = byte < kGsmAlphabet.size() ? kGsmAlphabet[byte] : static_cast<char16_t>(0xFF00 + byte);
  }
  return table;
}();

// Every character up to the last one that the alphabet holds (U+03A9).
constexpr auto kByteOfWide = [] {
  std::array<std::uint8_t, 0x3AA> table{};
  for (std::size_t wide = 0; wide < table.size(); ++wide) table[wide] = static_cast<std::uint8_t>(wide);
  for (std::size_t code = 0; code < kGsmAlphabet.size(); ++code) {
    table[kGsmAlphabet[code]] = static_cast<std::uint8_t>(code);
  }
  return table;
}();

}  // namespace

std::uint8_t WideToGsm(char16_t character) {
  return character < kByteOfWide.size() ? kByteOfWide[character] : static_cast<std::uint8_t>(character);
}

char16_t GsmToWide(std::uint8_t code) { return kWideOfByte[code]; }

void WideToGsmBytes(std::uint8_t* destination, const char16_t* source, std::size_t count) {
  for (std::size_t i = 0; i < count; ++i) destination[i] = WideToGsm(source[i]);
}

void GsmBytesToWide(char16_t* destination, const std::uint8_t* source, std::size_t count) {
  for (std::size_t i = 0; i < count; ++i) destination[i] = GsmToWide(source[i]);
}

}  // namespace celldesk
