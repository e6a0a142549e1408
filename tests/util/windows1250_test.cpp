#include "util/windows1250.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <random>
#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace celldesk {
namespace {

TEST(Windows1250, KeepsSevenBitCharacters) {
  for (std::uint8_t byte = 0; byte < 0x80; ++byte) {
    EXPECT_EQ(FromWindows1250(byte), byte);
    EXPECT_EQ(ToWindows1250(byte), byte);
  }
}

TEST(Windows1250, EveryByteComesBackAsItself) {
  std::set<char16_t> characters;
  for (int byte = 0; byte < 256; ++byte) {
    const char16_t character = FromWindows1250(static_cast<std::uint8_t>(byte));
    EXPECT_EQ(ToWindows1250(character), byte);
    characters.insert(character);
  }
  EXPECT_EQ(characters.size(), 256U);
}

TEST(Windows1250, HasTheLettersOfCentralEurope) {
  struct Pair {
    std::uint8_t byte;
    char16_t character;
  };
  for (const auto& [byte, character] : {Pair{0x8A, 0x0160},
                                        {0x9E, 0x017E},
                                        {0xA3, 0x0141},
                                        {0xB9, 0x0105},
                                        {0xE8, 0x010D},
                                        {0xF8, 0x0159},
                                        {0xE9, 0x00E9},
                                        {0xFF, 0x02D9},
                                        {0x82, 0x201A},
                                        {0x99, 0x2122}}) {
    EXPECT_EQ(FromWindows1250(byte), character);
    EXPECT_EQ(ToWindows1250(character), byte);
  }
}

TEST(Windows1250, TellsSevenBitTextsOfEveryLength) {
  for (std::size_t length = 0; length < 40; ++length) {
    std::vector<std::uint8_t> bytes(length, 0x7F);
    EXPECT_TRUE(IsAscii(bytes));
    for (std::uint8_t& byte : bytes) {
      byte = 0x80;
      EXPECT_FALSE(IsAscii(bytes));
      byte = 0x7F;
    }
  }
}

TEST(Windows1250, HasTheUpperHalfOfTheCodePage) {
  constexpr std::u16string_view kCharacters =
      u"\x0080\x0081\u201A\x0083\u201E\u2026\u2020\u2021\x0088\u2030\u0160\u2039\u015A\u0164\u017D\u0179"
      u"\x0090\u2018\u2019\u201C\u201D\u2022\u2013\u2014\x0098\u2122\u0161\u203A\u015B\u0165\u017E\u017A"
      u"\u00A0\u02C7\u02D8\u0141\u00A4\u0104\u00A6\u00A7\u00A8\u00A9\u015E\u00AB\u00AC\u00AD\u00AE\u017B"
      u"\u00B0\u00B1\u02DB\u0142\u00B4\u00B5\u00B6\u00B7\u00B8\u0105\u015F\u00BB\u013D\u02DD\u013E\u017C"
      u"\u0154\u00C1\u00C2\u0102\u00C4\u0139\u0106\u00C7\u010C\u00C9\u0118\u00CB\u011A\u00CD\u00CE\u010E"
      u"\u0110\u0143\u0147\u00D3\u00D4\u0150\u00D6\u00D7\u0158\u016E\u00DA\u0170\u00DC\u00DD\u0162\u00DF"
      u"\u0155\u00E1\u00E2\u0103\u00E4\u013A\u0107\u00E7\u010D\u00E9\u0119\u00EB\u011B\u00ED\u00EE\u010F"
      u"\u0111\u0144\u0148\u00F3\u00F4\u0151\u00F6\u00F7\u0159\u016F\u00FA\u0171\u00FC\u00FD\u0163\u02D9";
  for (std::size_t place = 0; place < kCharacters.size(); ++place)
    EXPECT_EQ(FromWindows1250(static_cast<std::uint8_t>(0x80 + place)), kCharacters[place]) << place;
  EXPECT_EQ(kCharacters.size(), 128U);
}

TEST(Windows1250, UndefinedBytesStandForThemselves) {
  for (const int byte : {0x80, 0x81, 0x83, 0x88, 0x90, 0x98}) {
    EXPECT_EQ(FromWindows1250(static_cast<std::uint8_t>(byte)), byte);
  }
}

TEST(Windows1250, OtherCharactersGiveTheirLowByte) {
  EXPECT_EQ(ToWindows1250(0x20AC), 0xAC);  // the euro sign
  EXPECT_EQ(ToWindows1250(0x0416), 0x16);
  EXPECT_EQ(ToWindows1250(0xFFFF), 0xFF);
}

// Bytes of both halves in runs of every length, so that runs of eight begin and end anywhere.
TEST(Windows1250, WidensEveryRunAsOneByteAfterTheOther) {
  std::mt19937 random(23);
  for (std::size_t size = 0; size < 70; ++size) {
    for (const std::uint32_t one_in : {1U, 4U, 1000U}) {
      std::vector<std::uint8_t> bytes(size);
      for (std::uint8_t& byte : bytes) {
        byte = static_cast<std::uint8_t>(random() % one_in == 0 ? random() % 256 : random() % 128);
      }
      std::u16string expected;
      for (const std::uint8_t byte : bytes) expected += FromWindows1250(byte);
      std::u16string widened(size + 1, u'*');
      WidenWindows1250(bytes, widened.data());
      EXPECT_EQ(widened, expected + u'*');
    }
  }
}

}  // namespace
}  // namespace celldesk
