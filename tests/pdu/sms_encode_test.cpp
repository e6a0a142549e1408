#include <gtest/gtest.h>

#include <random>

#include "pdu/gsm_alphabet.h"
#include "pdu/septets.h"
#include "pdu/sms_message.h"

namespace celldesk {
namespace {

SmsMessage Composed(std::u16string_view number, std::u16string_view text, std::uint32_t first_octet = 0x11) {
  SmsMessage message;
  message.storage_status = kStoredUnsent;
  message.first_octet = first_octet;
  message.submit.toa = 0x91;
  message.submit.number = number;
  message.submit.relative_validity = 0xA7;
  message.text = text;
  return message;
}

std::u16string Encoded(SmsMessage message) {
  EXPECT_EQ(message.Encode(), S_OK);
  return message.pdu_text;
}

SmsMessage Redecoded(const SmsMessage& encoded) {
  SmsMessage message;
  message.storage_status = kStoredUnsent;
  message.pdu_text = encoded.pdu_text;
  message.tpdu_length = static_cast<std::int16_t>(encoded.pdu_text.size() / 2);
  EXPECT_EQ(message.Decode(), S_OK);
  return message;
}

std::u16string RandomText(std::mt19937& random, std::size_t length) {
  std::u16string text(length, u'\0');
  for (auto& character : text) character = GsmToWide(random() % 4 == 0 ? 0 : random() % 128);
  return text;
}

TEST(SmsEncode, ARelativeValidityIsOneOctet) {
  EXPECT_EQ(Encoded(Composed(u"420601123456", u"Hi")), u"11000C912460102143650000A702C834");
}

TEST(SmsEncode, ReportRequestAndReplyPathAreBitsOfTheFirstOctet) {
  const std::uint32_t first_octets[] = {0x31, 0x91, 0xB1};
  const std::u16string heads[] = {u"31", u"91", u"B1"};
  for (std::size_t i = 0; i < std::size(heads); ++i) {
    EXPECT_EQ(Encoded(Composed(u"420601123456", u"Hi", first_octets[i])),
              heads[i] + u"000C912460102143650000A702C834");
  }
  EXPECT_EQ(0x11 | kStatusReportRequest | kReplyPath, 0xB1U);
}

TEST(SmsEncode, AnAbsoluteValidityIsSevenOctets) {
  SmsMessage message = Composed(u"420601123456", u"Hi", 0x19);
  message.submit.absolute_validity = DateTime({2001, 3, 0, 5, 9, 5, 7, 0}, true);
  EXPECT_EQ(Encoded(message),
            u"19000C912460102143650000"
            u"10305090507000"
            u"02C834");
}

TEST(SmsEncode, NoneAndEnhancedValidityWriteNothing) {
  EXPECT_EQ(Encoded(Composed(u"420601123456", u"Hi", 0x01)), u"01000C91246010214365000002C834");
  EXPECT_EQ(Encoded(Composed(u"420601123456", u"Hi", 0x09)), u"09000C91246010214365000002C834");
}

TEST(SmsEncode, ReferencePidAndDcsAreWrittenAsStored) {
  SmsMessage message = Composed(u"420601123456", u"Hi");
  message.submit.reference = 0xFE;
  message.pid = 0x39;
  message.dcs = 0xF5;
  EXPECT_EQ(Encoded(message), u"11FE0C9124601021436539F5A702C834");
}

TEST(SmsEncode, AnOddDestinationHasFillerZero) {
  EXPECT_EQ(Encoded(Composed(u"12345", u"Hi")),
            u"11000591214305"
            u"0000A702C834");
}

TEST(SmsEncode, AnEndingCommercialAtWithoutBitsIsNotWritten) {
  EXPECT_EQ(Encoded(Composed(u"12345", u"A@")),
            u"11000591214305"
            u"0000A7"
            u"0241");
  EXPECT_EQ(Encoded(Composed(u"12345", u"@")),
            u"11000591214305"
            u"0000A7"
            u"0100");
}

TEST(SmsEncode, AnEmptyTextHasLengthZero) {
  EXPECT_EQ(Encoded(Composed(u"12345", u"")),
            u"11000591214305"
            u"0000A7"
            u"00");
}

TEST(SmsEncode, CharactersOutsideTheAlphabetAreKeptToSevenBits) {
  // U+20AC gives 0xAC, of which 0x2C is packed.
  EXPECT_EQ(Encoded(Composed(u"12345", u"\u20AC")), Encoded(Composed(u"12345", u",")));
}

TEST(SmsEncode, OtherTypesAreNotHandled) {
  SmsMessage deliver = Composed(u"12345", u"Hi", 0x00);
  EXPECT_EQ(deliver.Encode(), E_NOTIMPL);
  SmsMessage report = Composed(u"12345", u"Hi", 0x02);
  EXPECT_EQ(report.Encode(), E_NOTIMPL);
}

TEST(SmsEncode, AReservedTypeLeavesThePdu) {
  SmsMessage message = Composed(u"12345", u"Hi", 0x03);
  message.pdu_text = u"before";
  EXPECT_EQ(message.Encode(), S_OK);
  EXPECT_EQ(message.pdu_text, u"before");
}

TEST(SmsEncode, TheStorageStatusIsNotLookedAt) {
  SmsMessage message = Composed(u"12345", u"Hi");
  message.storage_status = kReceivedRead;
  EXPECT_EQ(message.Encode(), S_OK);
  EXPECT_EQ(message.pdu_text.substr(0, 4), u"1100");
}

TEST(SmsEncode, AShorterMessageReplacesALongerOne) {
  SmsMessage message = Composed(u"12345", std::u16string(160, u'x'));
  ASSERT_EQ(message.Encode(), S_OK);
  message.text = u"";
  ASSERT_EQ(message.Encode(), S_OK);
  EXPECT_EQ(message.pdu_text, u"110005912143050000A700");
}

TEST(SmsEncode, TheLengthWrapsAbove255Characters) {
  const std::u16string pdu = Encoded(Composed(u"12345", std::u16string(256, u'x')));
  EXPECT_EQ(pdu.substr(20, 2), u"00");
  EXPECT_EQ(pdu.size(), 22 + 2 * OctetsOfSeptets(256));
}

TEST(SmsEncode, WhatFitsTheBufferIsEncodedAndOneMoreIsNot) {
  // Eleven octets stand before the septets, so 245 are left: 280 characters.
  SmsMessage fits = Composed(u"12345", std::u16string(280, u'x'));
  EXPECT_EQ(fits.Encode(), S_OK);
  EXPECT_EQ(fits.pdu_text.size(), 512U);
  SmsMessage exceeds = Composed(u"12345", std::u16string(281, u'x'));
  exceeds.pdu_text = u"before";
  EXPECT_EQ(exceeds.Encode(), E_FAIL);
  EXPECT_EQ(exceeds.pdu_text, u"before");
  SmsMessage without_validity = Composed(u"12345", std::u16string(281, u'x'), 0x01);
  EXPECT_EQ(without_validity.Encode(), S_OK) << "one octet less stands before";
  EXPECT_EQ(without_validity.pdu_text.size(), 512U);
}

TEST(SmsEncode, ANumberThatDoesNotFitIsRefused) {
  SmsMessage message = Composed(std::u16string(600, u'1'), u"");
  EXPECT_EQ(message.Encode(), E_FAIL);
}

TEST(SmsEncode, DecodeOfEncodeIsTheIdentityForEveryLength) {
  std::mt19937 random(23);
  for (std::size_t length = 0; length <= 160; ++length) {
    for (const std::uint32_t first_octet : {0x01U, 0x11U, 0x19U, 0xB1U}) {
      SmsMessage message = Composed(u"420601123456", RandomText(random, length), first_octet);
      message.submit.reference = static_cast<std::uint8_t>(length);
      message.submit.absolute_validity = DateTime({2001, 3, 0, 5, 9, 5, 7, 0}, true);
      ASSERT_EQ(message.Encode(), S_OK);
      const SmsMessage back = Redecoded(message);
      ASSERT_EQ(back.text, message.text);
      ASSERT_EQ(back.first_octet, message.first_octet);
      ASSERT_EQ(back.submit.number, message.submit.number);
      ASSERT_EQ(back.submit.toa, message.submit.toa);
      ASSERT_EQ(back.submit.reference, message.submit.reference);
      if (first_octet == 0x19) {
        ASSERT_EQ(back.submit.absolute_validity.fields, message.submit.absolute_validity.fields);
      }
      if (first_octet == 0x11) {
        ASSERT_EQ(back.submit.relative_validity, 0xA7);
      }
    }
  }
}

TEST(SmsEncode, TextsOfCommercialAtsReadBackThoughTheirLastOctetIsMissing) {
  for (std::size_t length = 0; length <= 160; ++length) {
    SmsMessage message = Composed(u"12345", std::u16string(length, u'@'));
    ASSERT_EQ(message.Encode(), S_OK);
    const bool spills = length != 0 && 7 * (length - 1) % 8 >= 2;
    EXPECT_EQ(message.pdu_text.size(), 22 + 2 * (OctetsOfSeptets(length) - (spills ? 1 : 0))) << length;
    EXPECT_EQ(Redecoded(message).text, message.text) << length;
  }
}

TEST(SmsEncode, ACutPduNeverReadsOutsideAndKeepsTheFieldsBeforeTheCut) {
  std::mt19937 random(5);
  SmsMessage message = Composed(u"420601123456", RandomText(random, 160));
  ASSERT_EQ(message.Encode(), S_OK);
  constexpr std::size_t kBeforeSeptets = 28;
  for (std::size_t length = 0; length <= message.pdu_text.size(); ++length) {
    SmsMessage cut;
    cut.storage_status = kStoredUnsent;
    cut.pdu_text = std::u16string(message.pdu_text, 0, length);
    cut.tpdu_length = static_cast<std::int16_t>(length / 2);
    const Status status = cut.Decode();
    if (length < 2) {
      EXPECT_EQ(status, E_FAIL);
    } else if (length >= kBeforeSeptets) {
      EXPECT_EQ(status, S_OK);
      EXPECT_EQ(cut.submit.number, u"420601123456");
      const std::size_t whole = (length - kBeforeSeptets) / 2 * 8 / 7;
      EXPECT_EQ(cut.text.substr(0, whole), message.text.substr(0, whole));
      EXPECT_EQ(cut.text.size(), 160U);
    }
  }
}

TEST(SmsEncode, ArbitraryTextNeverReadsOutside) {
  std::mt19937 random(99);
  for (int round = 0; round < 20'000; ++round) {
    SmsMessage message;
    message.pdu_text.resize(random() % 80);
    for (auto& character : message.pdu_text) {
      character = static_cast<char16_t>(random() % 2 == 0 ? u"0123456789ABCDEF"[random() % 16] : random());
    }
    message.storage_status = static_cast<std::int32_t>(random() % 4);
    message.tpdu_length =
        static_cast<std::int16_t>(random() % 3 == 0 ? random() : message.pdu_text.size() / 2);
    const Status status = message.Decode();
    ASSERT_TRUE(status == S_OK || status == E_FAIL || status == E_NOTIMPL);
    ASSERT_LE(message.text.size(), 255U);
  }
}

}  // namespace
}  // namespace celldesk
