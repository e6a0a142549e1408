#include "pdu/septets.h"

#include <gtest/gtest.h>

#include <random>
#include <string>
#include <vector>

namespace celldesk {
namespace {

std::u16string PackedOneByOne(const std::vector<std::uint8_t>& septets, std::size_t start) {
  std::u16string text(2 * (start + septets.size()) + 4, u'\0');
  for (std::size_t k = 0; k < septets.size(); ++k) PackSeptet(text, septets[k], start, k);
  return text;
}

std::vector<std::uint8_t> RandomSeptets(std::mt19937& random, std::size_t count) {
  std::vector<std::uint8_t> septets(count);
  // Many zeros, so that last octets without bits occur.
  for (auto& septet : septets) septet = random() % 3 == 0 ? 0 : random() % 128;
  return septets;
}

TEST(Septets, UnpackReadsSevenBitsAcrossOctets) {
  // "hello" (GSM 03.38): E8 32 9B FD 06
  const std::u16string text = u"FFE8329BFD06";
  const std::string expected = "hello";
  for (std::size_t k = 0; k < expected.size(); ++k) EXPECT_EQ(UnpackSeptet(text, 1, k), expected[k]) << k;
}

TEST(Septets, UnpackBeyondTheEndGivesZeros) {
  EXPECT_EQ(UnpackSeptet(u"FF", 0, 0), 0x7F);
  EXPECT_EQ(UnpackSeptet(u"FF", 0, 1), 0x01);
  EXPECT_EQ(UnpackSeptet(u"FF", 0, 2), 0);
  EXPECT_EQ(UnpackSeptet(u"FF", 7, 200), 0);
}

TEST(Septets, PackKeepsTheLowSevenBits) {
  std::u16string text(4, u'\0');
  PackSeptet(text, 0xC1, 0, 0);
  EXPECT_EQ(text, std::u16string(u"41\0\0", 4));
}

TEST(Septets, PackReplacesWhatStoodThere) {
  std::u16string text = u"FFFF";
  PackSeptet(text, 0, 0, 1);
  EXPECT_EQ(text, u"7FC0");
  text = u"FFA5";
  PackSeptet(text, 0, 0, 1);
  EXPECT_EQ(text, u"7F80") << "the bits behind the septet stay";
}

TEST(Septets, ALastOctetWithoutBitsIsNeverWritten) {
  EXPECT_EQ(PackedOneByOne({0x41, 0x00}, 0).substr(0, 4), std::u16string(u"41\0\0", 4));
  EXPECT_EQ(PackedOneByOne({0x41, 0x02}, 0).substr(0, 4), u"4101");
}

TEST(Septets, EightSeptetsFillSevenOctetsAndReadBack) {
  const std::vector<std::uint8_t> septets = {0x7F, 0x00, 0x55, 0x2A, 0x01, 0x40, 0x13, 0x00};
  const std::u16string text = PackedOneByOne(septets, 0);
  EXPECT_EQ(text.find(u'\0'), 14U);
  for (std::size_t k = 0; k < septets.size(); ++k) EXPECT_EQ(UnpackSeptet(text, 0, k), septets[k]);
}

TEST(Septets, AnEndingZeroBeyondShiftOneYieldsOneOctetFewer) {
  for (std::size_t count = 1; count <= 24; ++count) {
    std::vector<std::uint8_t> septets(count, 0x55);
    septets.back() = 0;
    const std::size_t shift = 7 * (count - 1) % 8;
    const std::size_t octets = PackedOneByOne(septets, 0).find(u'\0') / 2;
    EXPECT_EQ(octets, OctetsOfSeptets(count) - (shift >= 2 ? 1 : 0)) << count;
  }
}

TEST(Septets, PackingTogetherEqualsPackingOneByOne) {
  std::mt19937 random(7);
  for (std::size_t count = 0; count <= 255; ++count) {
    const std::vector<std::uint8_t> septets = RandomSeptets(random, count);
    const std::u16string expected = PackedOneByOne(septets, 3);
    std::u16string text(expected.size(), u'\0');
    PackSeptets(text, septets, 3);
    EXPECT_EQ(text, expected) << count;
  }
}

TEST(Septets, UnpackingTogetherEqualsUnpackingOneByOneWhateverTheText) {
  std::mt19937 random(11);
  for (std::size_t length = 0; length < 120; ++length) {
    std::u16string text(length, u'\0');
    for (auto& character : text) character = static_cast<char16_t>(random());
    std::vector<std::uint8_t> septets(random() % 256);
    const std::size_t start = random() % 70;
    UnpackSeptets(septets, text, start);
    for (std::size_t k = 0; k < septets.size(); ++k) ASSERT_EQ(septets[k], UnpackSeptet(text, start, k));
  }
}

TEST(Septets, PackingBeyondTheTextIsDropped) {
  std::u16string text(5, u'\0');
  PackSeptets(text, std::vector<std::uint8_t>(100, 0x7F), 0);
  EXPECT_EQ(text, std::u16string(u"FFFF\0", 5));
}

}  // namespace
}  // namespace celldesk
