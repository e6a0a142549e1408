#include <gtest/gtest.h>

#include "pdu/address.h"
#include "pdu/counted_memory.h"
#include "pdu/pdu_text.h"
#include "pdu/sms_message.h"

namespace celldesk {
namespace {

struct Allocations {
  Status status;
  std::size_t count;
};

/// Runs `work` with at most `allowed` allocations.
template <typename Work>
Allocations Measure(Work work, std::size_t allowed = 1'000'000) {
  const CountedMemory memory(allowed);
  const Status status = work();
  return {status, memory.count()};
}

SmsMessage Submit(std::size_t characters) {
  SmsMessage message;
  message.storage_status = kStoredUnsent;
  message.first_octet = 0x11;
  message.submit.toa = 0x91;
  message.submit.number = u"420601123456";
  message.text.assign(characters, u'x');
  return message;
}

SmsMessage Encoded(std::size_t characters) {
  SmsMessage source = Submit(characters);
  EXPECT_EQ(source.Encode(), S_OK);
  SmsMessage message;
  message.storage_status = kStoredUnsent;
  message.pdu_text = source.pdu_text;
  message.tpdu_length = static_cast<std::int16_t>(source.pdu_text.size() / 2);
  return message;
}

TEST(Memory, DecodingTakesAtMostThreeAllocations) {
  SmsMessage message = Encoded(160);
  const Allocations run = Measure([&] { return message.Decode(); });
  EXPECT_EQ(run.status, S_OK);
  EXPECT_LE(run.count, 3U);
}

TEST(Memory, EncodingTakesAtMostTwoAllocations) {
  SmsMessage message = Submit(160);
  const Allocations run = Measure([&] { return message.Encode(); });
  EXPECT_EQ(run.status, S_OK);
  EXPECT_LE(run.count, 2U);
}

TEST(Memory, ARecordOf65CharactersTakesAtMostOneAndAHalfKilobytes) {
  SmsMessage message = Encoded(65);
  ASSERT_EQ(message.Decode(), S_OK);
  std::size_t bytes = sizeof(message);
  for (const std::u16string* text : {&message.pdu_text, &message.text, &message.submit.number}) {
    bytes += (text->capacity() + 1) * sizeof(char16_t);
  }
  EXPECT_LE(bytes, 1536U);
}

TEST(Memory, DecodingWithoutMemoryFails) {
  for (std::size_t allowed = 0; allowed < 2; ++allowed) {
    SmsMessage message = Encoded(160);
    EXPECT_EQ(Measure([&] { return message.Decode(); }, allowed).status, E_OUTOFMEMORY) << allowed;
    EXPECT_EQ(message.Decode(), S_OK);
    EXPECT_EQ(message.text.size(), 160U);
  }
}

TEST(Memory, EncodingWithoutMemoryFailsAndKeepsThePdu) {
  SmsMessage message = Submit(160);
  message.pdu_text = u"00";
  EXPECT_EQ(Measure([&] { return message.Encode(); }, 0).status, E_OUTOFMEMORY);
  EXPECT_EQ(message.pdu_text, u"00");
}

TEST(Memory, AnAddressWithoutMemoryFails) {
  std::u16string number;
  std::uint8_t toa = 0;
  EXPECT_EQ(Measure([&] { return MakeAddress(number, toa, u"+420601123456"); }, 0).status, E_OUTOFMEMORY);
  EXPECT_EQ(number, u"");
}

}  // namespace
}  // namespace celldesk
