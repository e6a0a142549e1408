#include "platform/settings_document.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "support/registry_data.h"

namespace celldesk {
namespace {

using testing::ElementsAre;

TEST(SettingsDocument, AnEmptyTextIsAnEmptyDocument) {
  const SettingsDocument document = SettingsDocument::Parse("");
  EXPECT_EQ(document.ToText(), "");
  EXPECT_FALSE(document.damaged());
  EXPECT_TRUE(document.HasKey(u"CurrentUser"));
  EXPECT_FALSE(document.HasKey(u"CurrentUser\\K"));
}

TEST(SettingsDocument, ASoundTextComesBackAsItWas) {
  const std::string text =
      "# settings\n\n[CurrentUser/A]\n  x =  string:1\n; why\nold = colour:red\n\n[CurrentUser/A/B]\n";
  const SettingsDocument document = SettingsDocument::Parse(text);
  EXPECT_FALSE(document.damaged());
  EXPECT_EQ(document.ToText(), text);
}

TEST(SettingsDocument, ALastLineNeedsNoEnd) {
  const SettingsDocument document = SettingsDocument::Parse("[CurrentUser/A]\nx = number:1");
  EXPECT_EQ(document.Value(u"CurrentUser\\A", u"x"), NumberData(1));
}

TEST(SettingsDocument, CarriageReturnsAtTheEndOfALineNeverCount) {
  const SettingsDocument document = SettingsDocument::Parse("[CurrentUser/A]\r\r\nx = string:1\r\r\r\n");
  EXPECT_EQ(document.Value(u"CurrentUser\\A", u"x"), StringData(u"1"));
  EXPECT_EQ(document.ToText(), "[CurrentUser/A]\nx = string:1\n");
}

TEST(SettingsDocument, HoldsSixtyThousandKeysAndValues) {
  constexpr int kMany = 60'000;
  std::string text;
  for (int i = 0; i < kMany; ++i) text += "[CurrentUser/K" + std::to_string(i) + "]\n";
  for (int i = 0; i < kMany; ++i) text += "v" + std::to_string(i) + " = number:1\n";
  SettingsDocument document = SettingsDocument::Parse(text);
  EXPECT_EQ(document.SubkeyNames(u"CurrentUser").size(), std::size_t{kMany});
  EXPECT_EQ(document.ValueNames(u"CurrentUser\\K59999").size(), std::size_t{kMany});
  document.RemoveKey(u"CurrentUser\\K0");
  EXPECT_FALSE(document.HasKey(u"CurrentUser\\K0"));
  EXPECT_EQ(document.Value(u"CurrentUser\\k59999", u"V7"), NumberData(1));
}

TEST(SettingsDocument, ASectionThatComesTwiceIsOneKey) {
  SettingsDocument document = SettingsDocument::Parse(
      "[CurrentUser/A]\nx = number:1\n[CurrentUser/B]\n[currentuser/a]\ny = number:2\n");
  EXPECT_THAT(document.ValueNames(u"CurrentUser\\A"), ElementsAre(u"x", u"y"));
  EXPECT_THAT(document.SubkeyNames(u"CurrentUser"), ElementsAre(u"A", u"B"));
}

TEST(SettingsDocument, OfTwoValuesOfOneNameTheFirstCountsAndBothAreRemoved) {
  SettingsDocument document = SettingsDocument::Parse("[CurrentUser/A]\nx = number:1\nX = number:2\n");
  EXPECT_EQ(document.Value(u"CurrentUser\\A", u"X"), NumberData(1));
  EXPECT_THAT(document.ValueNames(u"CurrentUser\\A"), ElementsAre(u"x"));
  EXPECT_TRUE(document.RemoveValue(u"CurrentUser\\A", u"x"));
  EXPECT_EQ(document.Value(u"CurrentUser\\A", u"x"), std::nullopt);
  EXPECT_FALSE(document.RemoveValue(u"CurrentUser\\A", u"x"));
}

TEST(SettingsDocument, LinesOfNoFormMarkItDamagedAndAreLeftOut) {
  for (const char* line :
       {"no value", "[open", "[]", "[A//B]", "[A/\\x]", "\\q = number:1", "x\xFF = number:1"}) {
    const SettingsDocument document =
        SettingsDocument::Parse("[CurrentUser/A]\nx = number:1\n" + std::string(line) + "\n");
    EXPECT_TRUE(document.damaged()) << line;
    EXPECT_EQ(document.ToText(), "[CurrentUser/A]\nx = number:1\n") << line;
  }
}

TEST(SettingsDocument, ValuesBeforeTheFirstSectionBelongToNoKey) {
  EXPECT_TRUE(SettingsDocument::Parse("x = number:1\n").damaged());
}

TEST(SettingsDocument, ValuesAfterABrokenSectionBelongToNoKey) {
  const SettingsDocument document = SettingsDocument::Parse("[CurrentUser/A]\n[broken\nx = number:1\n");
  EXPECT_TRUE(document.damaged());
  EXPECT_EQ(document.Value(u"CurrentUser\\A", u"x"), std::nullopt);
}

TEST(SettingsDocument, AValueIsSetInItsPlaceAndANewOneGoesToTheEndOfItsKey) {
  SettingsDocument document =
      SettingsDocument::Parse("[CurrentUser/A]\nx=number:1\n# end\n\n[CurrentUser/B]\n");
  document.SetValue(u"CurrentUser\\A", u"X", NumberData(5));
  document.SetValue(u"CurrentUser\\A", u"y", NumberData(6));
  EXPECT_EQ(document.ToText(), "[CurrentUser/A]\nx = number:5\n# end\ny = number:6\n\n[CurrentUser/B]\n");
}

TEST(SettingsDocument, KeysAreSetApartByABlankLine) {
  SettingsDocument document;
  document.AddKey(u"CurrentUser\\A");
  document.AddKey(u"CurrentUser\\B/C");
  EXPECT_EQ(document.ToText(), "[CurrentUser/A]\n\n[CurrentUser/B\\u002fC]\n");
  EXPECT_TRUE(SettingsDocument::Parse(document.ToText()).HasKey(u"CurrentUser\\B/C"));
}

}  // namespace
}  // namespace celldesk
