#include "ui/framework/font.h"

#include <QApplication>
#include <QFont>

#include "ui/framework/framework_fixture.h"

namespace celldesk {
namespace {

class FontSetTest : public FrameworkTest {
 protected:
  static QFont Font(const FontSet& fonts, FontRole role) {
    return FontOf(&fonts, role, QApplication::font());
  }
};

TEST_F(FontSetTest, MakesTheFourOfTheList) {
  FontSet fonts;
  ASSERT_TRUE(fonts.Create(u"", 13));
  const QFont struck = Font(fonts, FontRole::kStruckOut), italic = Font(fonts, FontRole::kItalic);
  const QFont bold = Font(fonts, FontRole::kBold), both = Font(fonts, FontRole::kBoldItalic);
  EXPECT_TRUE(struck.strikeOut() && !struck.bold() && !struck.italic());
  EXPECT_TRUE(italic.italic() && !italic.bold() && !italic.strikeOut());
  EXPECT_TRUE(bold.bold() && !bold.italic());
  EXPECT_TRUE(both.bold() && both.italic());
  for (const QFont& font : {struck, italic, bold, both}) EXPECT_EQ(font.pixelSize(), 13);
}

TEST_F(FontSetTest, MakesTheThreeOfTheFieldsEighteenHigh) {
  FontSet fonts;
  ASSERT_TRUE(fonts.Create(u"", 13));
  const QFont plain = Font(fonts, FontRole::kField), struck = Font(fonts, FontRole::kFieldStruckOut);
  const QFont underlined = Font(fonts, FontRole::kFieldUnderlined);
  EXPECT_FALSE(plain.strikeOut() || plain.underline());
  EXPECT_TRUE(struck.strikeOut());
  EXPECT_TRUE(underlined.underline());
  for (const QFont& font : {plain, struck, underlined}) EXPECT_EQ(font.pixelSize(), 18);
}

TEST_F(FontSetTest, TakesTheFaceThatTheSystemNames) {
  FontSet fonts;
  ASSERT_TRUE(fonts.Create(u"Some Face", 20));
  EXPECT_EQ(Font(fonts, FontRole::kBold).family().toStdString(), "Some Face");
  EXPECT_EQ(Font(fonts, FontRole::kField).family().toStdString(), "Some Face");
}

TEST_F(FontSetTest, UsesTheSystemsOwnForNoNameAndNoHeight) {
  FontSet fonts;
  ASSERT_TRUE(fonts.Create(u"", 0));
  EXPECT_EQ(Font(fonts, FontRole::kItalic).family(), QApplication::font().family());
  EXPECT_EQ(Font(fonts, FontRole::kItalic).pointSizeF(), QApplication::font().pointSizeF());
}

TEST_F(FontSetTest, TakesANegativeHeightForThatOfTheCharacters) {
  FontSet fonts;
  ASSERT_TRUE(fonts.Create(u"", -13));
  EXPECT_EQ(Font(fonts, FontRole::kBold).pixelSize(), 13);
  EXPECT_EQ(Font(fonts, FontRole::kField).pixelSize(), 18);
}

TEST_F(FontSetTest, TakesNoHeightThatNoScreenHas) {
  for (const int height : {201, -201, 2147483647, -2147483647 - 1}) {
    FontSet fonts;
    ASSERT_TRUE(fonts.Create(u"", height));
    EXPECT_EQ(Font(fonts, FontRole::kBold).pointSizeF(), QApplication::font().pointSizeF()) << height;
  }
}

TEST_F(FontSetTest, GivesTheControlsOwnFontForTheNormalRole) {
  FontSet fonts;
  ASSERT_TRUE(fonts.Create(u"Some Face", 20));
  EXPECT_EQ(Font(fonts, FontRole::kNormal), QApplication::font());
  const FontSet none;
  EXPECT_EQ(Font(none, FontRole::kBold), QApplication::font());
}

}  // namespace
}  // namespace celldesk
