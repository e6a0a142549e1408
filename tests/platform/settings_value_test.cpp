#include "platform/settings_value.h"

#include <gtest/gtest.h>

#include "support/registry_data.h"

namespace celldesk {
namespace {

TEST(SettingsValue, EachTypeHasItsWrittenForm) {
  EXPECT_EQ(EncodeValue(StringData(u"COM1:")), "string:COM1:");
  EXPECT_EQ(EncodeValue(StringData(u"")), "string:");
  EXPECT_EQ(EncodeValue(NumberData(197)), "number:197");
  EXPECT_EQ(EncodeValue(NumberData(0xFFFFFFFF)), "number:4294967295");
  EXPECT_EQ(EncodeValue(BinaryData(std::vector<std::uint8_t>{0, 0x1C, 0xFF})), "binary:001cff");
  EXPECT_EQ(EncodeValue({RegistryType::kString, {65}}), "string-bytes:41");
  EXPECT_EQ(EncodeValue({RegistryType::kNumber, {1, 2}}), "number-bytes:0102");
}

TEST(SettingsValue, WhatPeopleWriteIsRead) {
  EXPECT_EQ(DecodeValue("string: a \\n b"), StringData(u" a \n b"));
  EXPECT_EQ(DecodeValue("string:\xC5\x98\\u00e9\\u00C9"), StringData(u"\u0158\u00E9\u00C9"));
  EXPECT_EQ(DecodeValue("number:  7 "), NumberData(7));
  EXPECT_EQ(DecodeValue("binary: 1C 00\tff"), std::nullopt);
  EXPECT_EQ(DecodeValue("binary: 1C 00  fF "), BinaryData(std::vector<std::uint8_t>{0x1C, 0, 0xFF}));
  EXPECT_EQ(DecodeValue("binary:"), BinaryData({}));
}

TEST(SettingsValue, WhatIsOfNoFormIsNoValue) {
  for (const char* text : {"", "COM1:", "strings:x", "String:x", "string:\\", "string:\\x", "string:\\u12",
                           "string:\\u12g4", "number:", "number:-1", "number:4294967296", "number:1x",
                           "number:0x10", "binary:1", "binary:1 c", "binary:zz", "number-bytes:1"})
    EXPECT_EQ(DecodeValue(text), std::nullopt) << text;
}

TEST(SettingsValue, EveryTextIsOneLineAndComesBack) {
  for (unsigned c = 0; c < 0x10000; ++c) {
    const std::u16string text = {static_cast<char16_t>(c), u'x', static_cast<char16_t>(c)};
    const std::string line = EncodeValue(StringData(text));
    ASSERT_EQ(line.find_first_of(std::string("\n\r\0", 3)), line.npos) << c;
    ASSERT_EQ(DecodeValue(line), StringData(text)) << c;
  }
}

TEST(SettingsValue, BlanksAtTheEndsAreMarkedSoThatEditorsLeaveThem) {
  EXPECT_EQ(EscapeText(u" a b "), "\\sa b\\s");
  EXPECT_EQ(UnescapeText("\\sa b\\s"), u" a b ");
}

TEST(SettingsValue, SpecialUnitsAreEscapedWhereTheyAreNamed) {
  EXPECT_EQ(EscapeText(u"a=b/c"), "a=b/c");
  EXPECT_EQ(EscapeText(u"a=b/c", u"="), "a\\u003db/c");
  EXPECT_EQ(UnescapeText("a\\u003db/c"), u"a=b/c");
}

}  // namespace
}  // namespace celldesk
