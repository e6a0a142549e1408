#include "ui/sms_reading.h"

#include <gtest/gtest.h>

#include "pdu/sms_message.h"
#include "ui/window_session.h"

namespace celldesk {
namespace {

// What a message of this text decodes to, once encoded.
std::u16string ThroughAPdu(std::u16string_view text) {
  SmsMessage message;
  message.storage_status = kStoredUnsent;
  message.first_octet = 1;
  message.submit.number = u"0123";
  message.submit.toa = 0x81;
  message.text = text;
  EXPECT_EQ(message.Encode(), S_OK);
  message.tpdu_length = static_cast<std::int16_t>(message.pdu_text.size() / 2);
  message.text.clear();
  EXPECT_EQ(message.Decode(), S_OK);
  return message.text;
}

TEST(TextAsReceived, IsWhatThePduHolds) {
  for (const std::u16string_view text :
       {u"Plain text, all of it!", u"@\u00E9\u00C6\u03A9", u"\u20AC 5", u"[x] {y} ~ \\ |",
        u"Caf\u00E8 \u010Dek\u00E1", u"\u0416\u4E16", u"tab\there", u"line\nend"}) {
    EXPECT_EQ(TextAsReceived(text), ThroughAPdu(text)) << Utf8(text);
  }
}

TEST(ReadingHint, SaysNothingOfATextInTheAlphabet) {
  EXPECT_EQ(ReadingHint(u""), u"");
  EXPECT_EQ(ReadingHint(u"Hello @\u00A3$\u00E9\u00F9\n\u0394\u00DF \u00FC"), u"");
}

TEST(ReadingHint, ShowsWhatArrives) { EXPECT_EQ(Utf8(ReadingHint(u"5 \u20AC")), "Arrives as: 5 ,"); }

TEST(ReadingHint, ShowsOneLine) {
  EXPECT_EQ(Utf8(ReadingHint(u"a\nb\u20AC")), "Arrives as: a b,");
  EXPECT_EQ(Utf8(ReadingHint(u"a\u010Db")), "Arrives as: a b");
}

TEST(ReadingHint, BeginsNearTheFirstChangeOfALongText) {
  EXPECT_EQ(Utf8(ReadingHint(u"abcdefgh\u20AC")), "Arrives as: abcdefgh,");
  EXPECT_EQ(Utf8(ReadingHint(u"1abcdefgh\u20AC tail")), "Arrives as: ...abcdefgh, tail");
}

}  // namespace
}  // namespace celldesk
