#include "config/operator_directory.h"

#include <gtest/gtest.h>

#include <random>

#include "ui/resources/providers.h"
#include "util/text.h"

namespace celldesk {
namespace {

using Names = std::vector<std::u16string>;

constexpr std::string_view kSmall =
    "@country;\r\n"
    "// the countries\r\n"
    "Austria;AT;43;\r\n"
    "\r\n"
    "Hungary;HU;\r\n"
    "Azerbaijan;AZ;994;\r\n"
    "Nowhere;NW;1;\r\n"
    "Desert;DE;2;\r\n"
    "@AT;43;\r\n"
    "A1;23201;+436640501;\r\n"
    "One;;+436990001999;\r\n"
    "// a comment;\r\n"
    "Two;23299;+43660000001;+43660000002;+43660000003;\r\n"
    "@HU;36;\r\n"
    "P#;annon# T\xE9l;21601;+36209300300;\r\n"
    "Number only;+36300000001;+36300000002;\r\n"
    "Short;21699;\r\n"
    "@AZ;994\r\n"
    "Azerfon;40004;+994702000700;\r\n"
    "@NW;1;\r\n";

FieldBytes Bytes(std::string_view text) {
  return {reinterpret_cast<const std::uint8_t*>(text.data()), text.size()};
}

OperatorDirectory Small() { return OperatorDirectory(Bytes(kSmall)); }

TEST(OperatorDirectory, ListsTheCountriesOfItsFirstSection) {
  EXPECT_EQ(Small().Countries(), (Names{u"Austria", u"Hungary", u"Azerbaijan", u"Nowhere", u"Desert"}));
}

TEST(OperatorDirectory, ListsTheOperatorsOfACountry) {
  EXPECT_EQ(Small().Operators(u"Austria"), (Names{u"A1", u"One", u"Two"}));
}

TEST(OperatorDirectory, CopiesNamesWithTheirEscapesResolved) {
  EXPECT_EQ(Small().Operators(u"Hungary"), (Names{u"P;annon#T\u00e9l", u"Number only", u"Short"}));
  EXPECT_EQ(Small().Centres(u"Hungary", u"P;annon#T\u00e9l"), (Names{u"+36209300300"}));
}

TEST(OperatorDirectory, ListsNoOperatorsWithoutASectionOrInAnEmptyOne) {
  EXPECT_TRUE(Small().Operators(u"Nowhere").empty());
  EXPECT_TRUE(Small().Operators(u"Desert").empty());
  EXPECT_TRUE(Small().Operators(u"Atlantis").empty());
  EXPECT_TRUE(Small().Operators(u"").empty());
}

TEST(OperatorDirectory, ListsEveryCentreOfAnOperator) {
  EXPECT_EQ(Small().Centres(u"Austria", u"Two"), (Names{u"+43660000001", u"+43660000002", u"+43660000003"}));
}

TEST(OperatorDirectory, AcceptsAnEmptyNetworkCode) {
  EXPECT_EQ(Small().Centres(u"Austria", u"One"), (Names{u"+436990001999"}));
}

TEST(OperatorDirectory, AcceptsAHeaderThatIsNotClosed) {
  EXPECT_EQ(Small().Operators(u"Azerbaijan"), (Names{u"Azerfon"}));
  EXPECT_EQ(Small().Centres(u"Azerbaijan", u"Azerfon"), (Names{u"+994702000700"}));
}

TEST(OperatorDirectory, AcceptsACentreInPlaceOfANetworkCode) {
  EXPECT_EQ(Small().Centres(u"Hungary", u"Number only"), (Names{u"+36300000002"}));
  EXPECT_TRUE(Small().Centres(u"Hungary", u"Short").empty());
}

TEST(OperatorDirectory, FindsNoCentresForAnOperatorOfAnotherCountry) {
  EXPECT_TRUE(Small().Centres(u"Austria", u"Azerfon").empty());
  EXPECT_TRUE(Small().Centres(u"Atlantis", u"A1").empty());
}

TEST(OperatorDirectory, MeetsSectionsAfterTextOfItsOwn) {
  const OperatorDirectory directory(
      Bytes("// a list\r\n@country;\r\nAustria;AT;43;\r\n@AT;43;\r\nA1;1;+43;\r\n"));
  EXPECT_EQ(directory.Countries(), (Names{u"Austria"}));
  EXPECT_EQ(directory.Operators(u"Austria"), (Names{u"A1"}));
}

TEST(OperatorDirectory, TakesOnlyTwoSlashesForAComment) {
  const OperatorDirectory directory(
      Bytes("@country;\r\n// one\r\n\r\n//two;\r\n/Slash;SL;1;\r\n@SL;1;\r\n//\r\n/A;1;+1;\r\n/B;2;+2;\r\n"));
  EXPECT_EQ(directory.Countries(), (Names{u"/Slash"}));
  EXPECT_EQ(directory.Operators(u"/Slash"), (Names{u"/A", u"/B"}));
  EXPECT_EQ(directory.Centres(u"/Slash", u"/B"), (Names{u"+2"}));
}

TEST(OperatorDirectory, ListsNothingWithoutASection) {
  for (const std::string_view text : {"", "Austria;AT;43;\r\n", "x@\r\n", "@", "@\r\n", "\r\n"}) {
    const OperatorDirectory directory(Bytes(text));
    EXPECT_TRUE(directory.Countries().empty()) << text;
    EXPECT_TRUE(directory.Operators(u"Austria").empty());
    EXPECT_TRUE(directory.Centres(u"Austria", u"A1").empty());
  }
}

TEST(OperatorDirectory, WalksSectionsAndLinesByPosition) {
  const OperatorDirectory directory = Small();
  EXPECT_EQ(directory.FirstSection(), 0U);
  const auto austria = directory.NextSection(0);
  ASSERT_TRUE(austria);
  EXPECT_EQ(directory.CopyField(*austria), u"@AT");
  const auto a1 = directory.FirstLine(*austria);
  ASSERT_TRUE(a1);
  const auto code = directory.SkipField(*a1);
  ASSERT_TRUE(code);
  EXPECT_EQ(directory.CopyField(*code), u"23201");
  const auto one = directory.NextLine(*code);
  ASSERT_TRUE(one);
  EXPECT_EQ(directory.CopyField(*one), u"One");
  const auto two = directory.NextLine(*one);
  ASSERT_TRUE(two);
  EXPECT_EQ(directory.NextLine(*two), std::nullopt);
}

TEST(OperatorDirectory, ComparesATextWithAField) {
  const OperatorDirectory directory(Bytes("a#;b;c\rd;"));
  EXPECT_EQ(directory.CompareField(u"a;b", 0), 0);
  EXPECT_LT(directory.CompareField(u"a;", 0), 0);
  EXPECT_GT(directory.CompareField(u"a;bc", 0), 0);
  EXPECT_LT(directory.CompareField(u"A;b", 0), 0);
  EXPECT_GT(directory.CompareField(u"b", 0), 0);
  EXPECT_EQ(directory.CompareField(u"c\rd", 5), 0);
  EXPECT_EQ(directory.CompareField(u"c\nd", 5), 0);
  EXPECT_NE(directory.CompareField(u"c d", 5), 0);
  EXPECT_EQ(directory.SkipField(0), 5U);
  EXPECT_EQ(directory.SkipField(5), std::nullopt);
}

TEST(OperatorDirectory, ReadsAnyBytesWithoutHarm) {
  std::mt19937 random(7);
  for (int round = 0; round < 2000; ++round) {
    std::string text;
    for (int i = 0; i < 50; ++i) text += "@@#;;\r\n/AB1+"[random() % 12];
    const OperatorDirectory directory(Bytes(text));
    for (const auto& country : directory.Countries()) {
      for (const auto& name : directory.Operators(country)) {
        EXPECT_LE(directory.Centres(country, name).size(), text.size());
      }
    }
  }
}

class Providers : public testing::Test {
 protected:
  std::string_view Text() const {
    return {reinterpret_cast<const char*>(ProvidersResource().data()), ProvidersResource().size()};
  }

  const OperatorDirectory directory_{ProvidersResource()};
};

TEST_F(Providers, HoldsTheCountriesInThisOrder) {
  const Names expected = {u"Andorra",        u"Austria",         u"Australia",
                          u"Azerbaijan",     u"Bahrain",         u"Belgium",
                          u"Bulgaria",       u"Canada",          u"China",
                          u"Croatia",        u"Czech Republic",  u"Denmark",
                          u"Egypt",          u"Estonia",         u"Finland",
                          u"France",         u"Germany",         u"Greece",
                          u"Hong Kong",      u"Hungary",         u"Iceland",
                          u"India",          u"Indonesia",       u"Ireland",
                          u"Israel",         u"Italy",           u"Kuwait",
                          u"Latvia",         u"Lebanon",         u"Lithuania",
                          u"Luxembourg",     u"Macedonia",       u"Malaysia",
                          u"Mauritius",      u"Netherlands",     u"New Zealand",
                          u"Norway",         u"Philippines",     u"Poland",
                          u"Portugal",       u"Romania",         u"Russia",
                          u"Singapore",      u"Slovak Republic", u"Slovenia",
                          u"South Africa",   u"Spain",           u"Sweden",
                          u"Switzerland",    u"Taiwan",          u"Thailand",
                          u"Turkey",         u"Ukraine",         u"United Arab Emirates",
                          u"United Kingdom", u"United States",   u"Yugoslavia",
                          u"Zimbabwe"};
  EXPECT_EQ(directory_.Countries(), expected);
}

TEST_F(Providers, HoldsFiftyEightCountriesWithTheirOperators) {
  const Names countries = directory_.Countries();
  ASSERT_EQ(countries.size(), 58U);
  std::size_t operators = 0;
  for (const std::u16string& country : countries) operators += directory_.Operators(country).size();
  EXPECT_EQ(operators, 163U);
  int sections = 0;
  for (auto section = directory_.FirstSection(); section; section = directory_.NextSection(*section))
    ++sections;
  EXPECT_EQ(sections, 59) << "one for each country, and theirs";
}

// Every line of the sections is reached: none is hidden behind an irregular one.
TEST_F(Providers, HidesNoOperatorLine) {
  std::size_t lines = 0, sections = 0;
  for (std::size_t at = 0; at < Text().size(); at = Text().find("\r\n", at) + 2) {
    if (Text()[at] == '@') ++sections;
    if (sections > 1 && Text()[at] != '@') ++lines;
  }
  EXPECT_EQ(sections, 59U);
  EXPECT_EQ(lines, 163U);
}

TEST_F(Providers, GivesEveryOperatorACentreThatTheConnectionTakes) {
  for (const std::u16string& country : directory_.Countries())
    for (const std::u16string& name : directory_.Operators(country)) {
      const Names centres = directory_.Centres(country, name);
      EXPECT_FALSE(centres.empty()) << ToUtf8(country + u"/" + name);
      for (const std::u16string& centre : centres) {
        EXPECT_GE(centre.size(), 7U);
        EXPECT_EQ(centre.front(), u'+') << ToUtf8(centre);
      }
    }
}

TEST_F(Providers, HoldsTheIrregularRowsAsTheyStand) {
  EXPECT_NE(Text().find("Hungary;HU;\r\n"), std::string_view::npos);
  EXPECT_NE(Text().find("@AZ;994\r\n"), std::string_view::npos);
  EXPECT_EQ(directory_.Operators(u"Azerbaijan"), (Names{u"Azerfon"}));
  EXPECT_FALSE(directory_.Operators(u"Hungary").empty());
  EXPECT_EQ(directory_.Centres(u"Germany", u"E-Plus"), (Names{u"+491770620000"}));
  EXPECT_EQ(directory_.Centres(u"Australia", u"Optus Mobile"), (Names{u"+61411900000", u"+61411990000"}));
}

TEST_F(Providers, IsInWindows1250WithWholeLineEnds) {
  EXPECT_NE(Text().find("S\xEDminn;27401;"), std::string_view::npos);
  EXPECT_NE(Text().find("Tu\x9Amobil;"), std::string_view::npos);
  EXPECT_EQ(directory_.Centres(u"Iceland", u"S\u00edminn"), (Names{u"+3548900100"}));
  for (std::size_t i = 0; i < Text().size(); ++i) {
    ASSERT_EQ(Text()[i] == '\n', i > 0 && Text()[i - 1] == '\r') << i;
  }
}

}  // namespace
}  // namespace celldesk
