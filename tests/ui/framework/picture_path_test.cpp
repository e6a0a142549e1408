#include "ui/framework/picture_path.h"

#include <gtest/gtest.h>

#include <cmath>
#include <string>

namespace celldesk {
namespace {

using Kind = PictureStep::Kind;

PicturePoint EndOf(const PictureStep& step) { return step.points[step.kind == Kind::kCurve ? 2 : 0]; }

// The kinds as the letters that path data have for them, and the ends of the steps.
std::string Told(std::string_view data) {
  std::string told;
  for (const PictureStep& step : ReadPath(data)) {
    told += "MLCZ"[static_cast<int>(step.kind)];
    if (step.kind == Kind::kClose) continue;
    for (const double value : {EndOf(step).x, EndOf(step).y}) {
      told += std::to_string(value).substr(0, std::to_string(value).find('.') + 2) + " ";
    }
  }
  return told;
}

PicturePoint Middle(PicturePoint from, const PictureStep& curve) {
  const auto& [a, b, end] = curve.points;
  return {(from.x + 3 * a.x + 3 * b.x + end.x) / 8, (from.y + 3 * a.y + 3 * b.y + end.y) / 8};
}

TEST(ReadPath, TakesAbsoluteAndRelativeLines) {
  EXPECT_EQ(Told("M4 6.5L5 7H16V20"), "M4.0 6.5 L5.0 7.0 L16.0 7.0 L16.0 20.0 ");
  EXPECT_EQ(Told("m4 6.5l1 .5h11v13"), "M4.0 6.5 L5.0 7.0 L16.0 7.0 L16.0 20.0 ");
}

TEST(ReadPath, SplitsNumbersThatStandWithoutAGap) {
  EXPECT_EQ(Told("M10.2 10.5l.4 6.5-1-1.5.5"), "M10.2 10.5 L10.6 17.0 L9.6 15.5 ");
}

TEST(ReadPath, DrawsOnAfterAMoveWithMoreNumbers) {
  EXPECT_EQ(Told("M1 2 3 4"), "M1.0 2.0 L3.0 4.0 ");
  EXPECT_EQ(Told("m1 2 3 4"), "M1.0 2.0 L4.0 6.0 ");
}

TEST(ReadPath, GoesOnFromTheStartOfAClosedOutline) {
  EXPECT_EQ(Told("M5 5h4v4zl1 1"), "M5.0 5.0 L9.0 5.0 L9.0 9.0 ZL6.0 6.0 ");
}

TEST(ReadPath, CountsACurvesPointsFromItsStart) {
  const auto steps = ReadPath("M10 10c1 2 3 4 5 6");
  ASSERT_EQ(steps.size(), 2U);
  EXPECT_EQ(steps[1].points[0].x, 11);
  EXPECT_EQ(steps[1].points[1].y, 14);
  EXPECT_EQ(EndOf(steps[1]).x, 15);
}

TEST(ReadPath, EndsAtTheFirstFault) {
  EXPECT_EQ(Told("M1 1L2 2Q3 3 4 4L5 5"), "M1.0 1.0 L2.0 2.0 ");
  EXPECT_EQ(Told("M1 1L2"), "M1.0 1.0 ");
  EXPECT_EQ(Told("M1 1A5 5 0 2 0 9 9"), "M1.0 1.0 ");
  EXPECT_EQ(Told("M1 1z5"), "M1.0 1.0 Z");
  EXPECT_EQ(Told("12 3"), "");
  EXPECT_EQ(Told(""), "");
}

TEST(ReadPath, DrawsAnArcClockwiseOrAgainst) {
  // A half circle from left to right: over the top of the screen, or under it.
  const auto over = ReadPath("M4 20a8 8 0 0 1 16 0"), under = ReadPath("M4 20a8 8 0 0 0 16 0");
  ASSERT_EQ(over.size(), 3U);
  ASSERT_EQ(under.size(), 3U);
  EXPECT_NEAR(EndOf(over[1]).y, 12, 1e-9);
  EXPECT_NEAR(EndOf(under[1]).y, 28, 1e-9);
  EXPECT_EQ(EndOf(over[2]).x, 20);
}

TEST(ReadPath, TakesTheLongOrTheShortWayRound) {
  // A quarter of the circle around 10, 10, and what is left of it.
  EXPECT_EQ(ReadPath("M15 10A5 5 0 0 1 10 15").size(), 2U);
  EXPECT_EQ(ReadPath("M15 10A5 5 0 1 0 10 15").size(), 4U);
}

TEST(ReadPath, TakesFlagsThatStandWithoutAGap) {
  EXPECT_EQ(Told("M6 11a5 5 0 01-4 2"), Told("M6 11a5 5 0 0 1 -4 2"));
}

TEST(AppendArc, StaysOnItsCircle) {
  for (const bool large : {false, true}) {
    for (const bool sweep : {false, true}) {
      std::vector<PictureStep> steps;
      const PicturePoint start{13, 14}, end{15, 10};  // both 5 from 10, 10 or from its mirror
      AppendArc(steps, start, {5, 5, large, sweep}, end);
      const PicturePoint center = large == sweep ? PicturePoint{10, 10} : PicturePoint{18, 14};
      PicturePoint from = start;
      for (const PictureStep& step : steps) {
        const PicturePoint middle = Middle(from, step);
        EXPECT_NEAR(std::hypot(middle.x - center.x, middle.y - center.y), 5, 0.01) << large << sweep;
        from = EndOf(step);
      }
      EXPECT_EQ(from.x, end.x);
      EXPECT_EQ(from.y, end.y);
    }
  }
}

TEST(AppendArc, GrowsARadiusThatIsTooSmall) {
  std::vector<PictureStep> steps;
  AppendArc(steps, {0, 0}, {1, 1, false, true}, {8, 0});
  ASSERT_EQ(steps.size(), 2U);
  EXPECT_NEAR(EndOf(steps[0]).y, -4, 1e-9);
}

TEST(AppendArc, IsALineWithoutARadius) {
  std::vector<PictureStep> steps;
  AppendArc(steps, {0, 0}, {0, 3, false, true}, {8, 1});
  ASSERT_EQ(steps.size(), 1U);
  EXPECT_EQ(steps[0].kind, Kind::kLine);
}

TEST(AppendArc, DrawsNothingToItsOwnStart) {
  std::vector<PictureStep> steps;
  AppendArc(steps, {3, 3}, {2, 2, true, true}, {3, 3});
  EXPECT_TRUE(steps.empty());
}

}  // namespace
}  // namespace celldesk
