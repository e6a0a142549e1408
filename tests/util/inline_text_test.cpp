#include "util/inline_text.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

namespace celldesk {
namespace {

using Text = InlineText<2>;

// Of each kind: empty, short, as long as fits, one longer, much longer.
std::vector<std::u16string> Samples() {
  return {
      u"", u"a", u"ab", u"abc", u"\u017Dlu\u0165ou\u010Dk\u00FD k\u016F\u0148", std::u16string(1000, u'x')};
}

TEST(InlineText, IsEmptyAtFirst) {
  const Text text;
  EXPECT_TRUE(text.empty());
  EXPECT_EQ(text.size(), 0U);
  EXPECT_EQ(text, u"");
}

TEST(InlineText, HoldsTextsOfEveryLength) {
  for (const std::u16string& sample : Samples()) {
    const Text text = sample;
    EXPECT_EQ(text.view(), sample);
    EXPECT_EQ(text.size(), sample.size());
    EXPECT_EQ(text.empty(), sample.empty());
  }
}

TEST(InlineText, EveryTextReplacesEveryOther) {
  for (const std::u16string& former : Samples()) {
    for (const std::u16string& sample : Samples()) {
      Text text = former;
      text = sample;
      EXPECT_EQ(text, sample);
      text = Text(former);
      EXPECT_EQ(text, former);
      const Text copied = sample;
      text = copied;
      EXPECT_EQ(text, sample);
      EXPECT_EQ(copied, sample);
    }
  }
}

TEST(InlineText, ACopyStandsForItself) {
  for (const std::u16string& sample : Samples()) {
    Text text = sample;
    Text copy = text;
    text = u"other";
    EXPECT_EQ(copy, sample);
    copy.clear();
    EXPECT_TRUE(copy.empty());
    EXPECT_EQ(text, u"other");
  }
}

TEST(InlineText, AMoveLeavesTheSourceEmptyAndUsable) {
  for (const std::u16string& sample : Samples()) {
    Text text = sample;
    const Text taken = std::move(text);
    EXPECT_EQ(taken, sample);
    EXPECT_TRUE(text.empty());  // NOLINT(bugprone-use-after-move): what a move leaves is stated
    text = sample;
    EXPECT_EQ(text, sample);
  }
}

TEST(InlineText, TakesItselfAndAPieceOfItself) {
  for (const std::u16string& sample : Samples()) {
    Text text = sample;
    Text& same = text;
    text = same;
    EXPECT_EQ(text, sample);
    text = std::move(same);
    EXPECT_EQ(text, sample);
    if (sample.empty()) continue;
    text = text.view().substr(1);
    EXPECT_EQ(text, sample.substr(1));
  }
}

TEST(InlineText, ComparesByItsCharacters) {
  EXPECT_EQ(Text(u"abcdef"), Text(u"abcdef"));
  EXPECT_NE(Text(u"abcdef"), Text(u"abcdeg"));
  EXPECT_NE(Text(u"abc"), Text(u"abcd"));
  EXPECT_NE(Text(u"abc"), std::u16string(u"abcdefgh"));
}

TEST(InlineText, IsOverwrittenInPlace) {
  for (const std::u16string& former : Samples()) {
    for (const std::u16string& sample : Samples()) {
      Text text = former;
      text.Overwrite(sample.size() + 2,
                     [&sample](char16_t* room) { return sample.copy(room, sample.size()); });
      EXPECT_EQ(text, sample);
    }
  }
}

}  // namespace
}  // namespace celldesk
