#include "data/diacritics.h"

#include <gtest/gtest.h>

namespace celldesk {
namespace {

TEST(WithoutDiacritics, GivesTheBaseLettersOfCzechAndSlovak) {
  EXPECT_EQ(
      WithoutDiacritics(u"\u00e1\u010d\u010f\u00e9\u011b\u00ed\u013e\u0148\u00f3\u00f4\u0159\u0161\u0165"
                        u"\u016f\u00fa\u00fd\u017e"),
      u"acdeeilnoorstuuyz");
  EXPECT_EQ(
      WithoutDiacritics(u"\u00c1\u010c\u010e\u00c9\u011a\u00cd\u013d\u0147\u00d3\u00d4\u0158\u0160\u0164"
                        u"\u016e\u00da\u00dd\u017d"),
      u"ACDEEILNOORSTUUYZ");
}

TEST(WithoutDiacritics, KeepsEveryOtherCharacter) {
  EXPECT_EQ(WithoutDiacritics(u"Zo\u00eb M\u00fcller \u0141\u00f3d\u017a #;"),
            u"Zo\u00eb M\u00fcller \u0141od\u017a #;");
  EXPECT_EQ(WithoutDiacritics(u""), u"");
}

}  // namespace
}  // namespace celldesk
