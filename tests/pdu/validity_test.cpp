#include "pdu/validity.h"

#include <gtest/gtest.h>

#include "pdu/sms_message.h"
#include "pdu/texts.h"
#include "support/fake_locale.h"

namespace celldesk {
namespace {

SmsMessage Submit(std::uint32_t first_octet, std::uint8_t relative_validity) {
  SmsMessage message;
  message.first_octet = first_octet;
  message.submit.relative_validity = relative_validity;
  return message;
}

TEST(Validity, RelativePeriodsShowAsHoursDaysAndWeeks) {
  const FakeLocale locale;
  const std::pair<std::uint8_t, const char16_t*> periods[] = {
      {0, u"0:5 hours"},     {11, u"1:0 hours"},   {12, u"1:5 hours"}, {143, u"12:0 hours"},
      {144, u"12:30 hours"}, {167, u"24:0 hours"}, {168, u"2 days"},   {173, u"7 days"},
      {196, u"30 days"},     {197, u"5 weeks"},    {255, u"63 weeks"}};
  for (const auto& [value, text] : periods) {
    EXPECT_EQ(ValidityText(Submit(0x11, value), locale, TestText), text) << int{value};
  }
}

TEST(Validity, HoursTakeTheUsersTimeSeparator) {
  FakeLocale locale;
  locale.set_time_separator(u".");
  EXPECT_EQ(ValidityText(Submit(0x11, 12), locale, TestText), u"1.5 hours");
}

TEST(Validity, WithoutATimeSeparatorEveryRelativePeriodIsEmpty) {
  FakeLocale locale;
  locale.set_time_separator(u"");
  for (const int value : {12, 150, 168, 197}) {
    const SmsMessage message = Submit(0x11, static_cast<std::uint8_t>(value));
    EXPECT_EQ(ValidityText(message, locale, TestText), u"") << value;
  }
}

TEST(Validity, AnAbsoluteTimeShowsInTheUsersFormat) {
  const FakeLocale locale;
  SmsMessage message = Submit(0x19, 0);
  message.submit.absolute_validity = DateTime({2001, 3, 0, 5, 9, 5, 7, 0}, true);
  EXPECT_EQ(ValidityText(message, locale, TestText), u"till 5.3.2001 09:05:07");
}

TEST(Validity, NoneAndEnhancedAreEmpty) {
  const FakeLocale locale;
  EXPECT_EQ(ValidityText(Submit(0x01, 12), locale, TestText), u"");
  EXPECT_EQ(ValidityText(Submit(0x09, 12), locale, TestText), u"");
}

TEST(Validity, PresetsAreOfferedInTheirOrder) {
  const std::pair<int, int> expected[] = {{152, 11}, {153, 143}, {154, 167}, {155, 173}, {156, 255}};
  ASSERT_EQ(kValidityPresets.size(), std::size(expected));
  for (std::size_t i = 0; i < kValidityPresets.size(); ++i) {
    EXPECT_EQ(kValidityPresets[i].text, expected[i].first);
    EXPECT_EQ(kValidityPresets[i].value, expected[i].second);
  }
}

TEST(Validity, ValuesSnapToTheNearestPresetAndTiesGoUp) {
  const std::pair<int, int> snaps[] = {{0, 11},    {10, 11},   {11, 11},   {12, 11},   {76, 11},   {77, 143},
                                       {100, 143}, {143, 143}, {154, 143}, {155, 167}, {167, 167}, {169, 167},
                                       {170, 173}, {173, 173}, {213, 173}, {214, 255}, {255, 255}};
  for (const auto& [value, preset] : snaps)
    EXPECT_EQ(SnapValidity(static_cast<std::uint8_t>(value)), preset) << value;
}

TEST(Validity, EveryValueSnapsToAPresetThatStays) {
  for (int value = 0; value <= 255; ++value) {
    const std::uint8_t preset = SnapValidity(static_cast<std::uint8_t>(value));
    EXPECT_EQ(SnapValidity(preset), preset);
  }
}

}  // namespace
}  // namespace celldesk
