#include "util/windows1250.h"

#include <gtest/gtest.h>

#include <set>

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

}  // namespace
}  // namespace celldesk
