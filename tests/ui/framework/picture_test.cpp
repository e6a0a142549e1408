#include "ui/framework/picture.h"

#include <gtest/gtest.h>

#include <string>

namespace celldesk {
namespace {

using Kind = PicturePaint::Kind;

constexpr PicturePaint kNone{}, kInk{Kind::kInk}, kBlack{Kind::kColor, 0};

Picture Read(const std::string& inside, const std::string& attributes = "") {
  return ReadPicture("<svg xmlns=\"http://www.w3.org/2000/svg\" viewBox=\"0 0 24 12.5\" " + attributes + ">" +
                     inside + "</svg>");
}

TEST(ReadPicture, TakesTheSizeOfItsCanvas) {
  const Picture picture = Read("");
  EXPECT_EQ(picture.width, 24);
  EXPECT_EQ(picture.height, 12.5);
  EXPECT_TRUE(picture.shapes.empty());
}

TEST(ReadPicture, KeepsTheOrderOfItsShapes) {
  const Picture picture = Read(R"(<path d="M1 1h2"/><rect width="4" height="3"/><circle r="2"/>)");
  ASSERT_EQ(picture.shapes.size(), 3U);
  EXPECT_EQ(picture.shapes[0].outline.size(), 2U);
  EXPECT_EQ(picture.shapes[1].outline.size(), 6U);
  EXPECT_EQ(picture.shapes[2].outline.back().kind, PictureStep::Kind::kClose);
}

TEST(ReadPicture, FillsBlackAndDrawsNoLineWhereNothingElseIsSaid) {
  const PictureShape shape = Read(R"(<path d="M1 1h2"/>)").shapes.at(0);
  EXPECT_EQ(shape.fill, kBlack);
  EXPECT_EQ(shape.stroke, kNone);
  EXPECT_EQ(shape.stroke_width, 1);
}

TEST(ReadPicture, HandsWhatAnElementSaysDownToThoseWithin) {
  const Picture picture = Read(R"(<g fill="#fff"><path d="M1 1h2" stroke="#1f8a70"/></g><path d="M2 2h2"/>)",
                               R"(fill="none" stroke="currentColor" stroke-width="1.8")");
  ASSERT_EQ(picture.shapes.size(), 2U);
  EXPECT_EQ(picture.shapes[0].fill, (PicturePaint{Kind::kColor, 0xFFFFFF}));
  EXPECT_EQ(picture.shapes[0].stroke, (PicturePaint{Kind::kColor, 0x1F8A70}));
  EXPECT_EQ(picture.shapes[0].stroke_width, 1.8);
  EXPECT_EQ(picture.shapes[1].fill, kNone);
  EXPECT_EQ(picture.shapes[1].stroke, kInk);
}

TEST(ReadPicture, ReadsShortColoursAndPassesOverOthers) {
  EXPECT_EQ(Read(R"(<circle r="2" fill="#1a7"/>)").shapes[0].fill, (PicturePaint{Kind::kColor, 0x11AA77}));
  for (const char* fault : {"red", "#12", "#12345g", "1234567", "#zzz"}) {
    EXPECT_EQ(Read("<circle r=\"2\" fill=\"" + std::string(fault) + "\"/>").shapes[0].fill, kNone) << fault;
  }
}

TEST(ReadPicture, RoundsTheCornersOfARectangleByHalfItsSideAtMost) {
  const auto outline = Read(R"(<rect x="3" y="5" width="10" height="4" rx="9"/>)").shapes.at(0).outline;
  ASSERT_EQ(outline.size(), 10U);
  EXPECT_EQ(outline[0].points[0].x, 5);
  EXPECT_EQ(outline[2].points[2].x, 13);
  EXPECT_EQ(outline[2].points[2].y, 7);
}

TEST(ReadPicture, TellsAttributesApartWhoseNamesEndAlike) {
  const PictureShape shape =
      Read(R"(<circle stroke-width="2.2" cx="16" cy="7" r="2.5" fill="none"/>)").shapes.at(0);
  EXPECT_EQ(shape.stroke_width, 2.2);
  EXPECT_EQ(shape.outline[0].points[0].x, 18.5);
  EXPECT_EQ(Read(R"(<rect rx="1" width="4" height="4"/>)").shapes.at(0).outline[0].points[0].x, 1);
}

TEST(ReadPicture, IsEmptyForWhatIsNone) {
  for (const char* text : {"", "<", "no tags", "<svg", "<svg viewBox=\"0 0\"/>", "</svg></svg>", "<>"}) {
    const Picture picture = ReadPicture(text);
    EXPECT_TRUE(picture.shapes.empty()) << text;
    EXPECT_EQ(picture.width, 0) << text;
  }
}

}  // namespace
}  // namespace celldesk
