#include "pdu/gsm_alphabet.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace celldesk {
namespace {

struct Row {
  std::uint8_t first_code;
  std::u16string characters;
};

TEST(GsmAlphabet, HoldsTheCharactersOfTheStandardInTheirPlaces) {
  const std::vector<Row> rows = {
      {0x00, u"@\u00A3$\u00A5\u00E8\u00E9\u00F9\u00EC"},
      {0x08, u"\u00F2\u00C7\n\u00D8\u00F8\r\u00C5\u00E5"},
      {0x10, u"\u0394_\u03A6\u0393\u039B\u03A9\u03A0\u03A8"},
      {0x18, u"\u03A3\u0398\u039E\u00B9\u00C6\u00E6\u00DF\u00C9"},
      {0x20, u" !\"#\u00A4%&'"},
      {0x28, u"()*+,-./0123456789:;<=>?"},
      {0x40, u"\u00A1ABCDEFGHIJKLMNOPQRSTUVWXYZ\u00C4\u00D6\u00D1\u00DC\u00A7"},
      {0x60, u"\u00BFabcdefghijklmnopqrstuvwxyz\u00E4\u00F6\u00F1\u00FC\u00E0"},
  };
  std::size_t seen = 0;
  for (const auto& [first_code, characters] : rows) {
    for (std::size_t i = 0; i < characters.size(); ++i, ++seen) {
      const auto code = static_cast<std::uint8_t>(first_code + i);
      EXPECT_EQ(GsmToWide(code), characters[i]) << int{code};
      EXPECT_EQ(WideToGsm(characters[i]), code) << int{code};
    }
  }
  EXPECT_EQ(seen, 128U);
}

TEST(GsmAlphabet, CodeOfTheEscapeIsAnOrdinaryCharacter) {
  EXPECT_EQ(GsmToWide(0x1B), u'\u00B9');
  EXPECT_EQ(WideToGsm(u'\u00B9'), 0x1B);
}

TEST(GsmAlphabet, CharactersOutsideGiveTheirLowByte) {
  EXPECT_EQ(WideToGsm(u'['), 0x5B);
  EXPECT_EQ(GsmToWide(0x5B), u'\u00C4');
  EXPECT_EQ(WideToGsm(u'\u20AC'), 0xAC);
  EXPECT_EQ(WideToGsm(u'\u0159'), 0x59);
  EXPECT_EQ(WideToGsm(0xFFFF), 0xFF);
}

TEST(GsmAlphabet, EveryCharacterGivesACodeThatReadsBackOrItsLowByte) {
  for (unsigned wide = 0; wide <= 0xFFFF; ++wide) {
    const std::uint8_t code = WideToGsm(static_cast<char16_t>(wide));
    const bool in_alphabet = code < 0x80 && GsmToWide(code) == wide;
    EXPECT_TRUE(in_alphabet || code == (wide & 0xFF)) << wide;
  }
}

TEST(GsmAlphabet, ReceivedEightBitBytesAreSignExtended) {
  EXPECT_EQ(GsmToWide(0x80), 0xFF80);
  EXPECT_EQ(GsmToWide(0xFF), 0xFFFF);
}

TEST(GsmAlphabet, BytesConvertWithoutStoppingAtNul) {
  const std::u16string source(u"A\0@[", 4);
  std::vector<std::uint8_t> bytes(5, 0xEE);
  WideToGsmBytes(bytes.data(), source.data(), source.size());
  EXPECT_EQ(bytes, (std::vector<std::uint8_t>{0x41, 0x00, 0x00, 0x5B, 0xEE}));
}

TEST(GsmAlphabet, WideCharactersComeFromExactlyTheBytesGiven) {
  const std::uint8_t bytes[] = {0x00, 0x11, 0x90, 0x41};
  std::u16string wide(4, u'#');
  GsmBytesToWide(wide.data(), bytes, 3);
  EXPECT_EQ(wide, (std::u16string{u'@', u'_', 0xFF90, u'#'}));
}

}  // namespace
}  // namespace celldesk
