#include "simulator/sample_memory.h"

#include <gtest/gtest.h>

#include <set>

#include "simulator/character_set.h"
#include "simulator/loopback_network.h"

namespace celldesk::simulator {
namespace {

TEST(SampleMemory, HasPeopleInBothBooks) {
  const PhoneMemory memory = SampleMemory();
  EXPECT_EQ(memory.FindPhonebook("SM")->entries.size(), 12U);
  EXPECT_EQ(memory.FindPhonebook("ME")->entries.size(), 20U);
}

TEST(SampleMemory, EveryEntryFitsItsBookAndTheDefaultAlphabet) {
  const PhoneMemory memory = SampleMemory();
  for (const Phonebook& book : memory.phonebooks) {
    for (const auto& [location, entry] : book.entries) {
      EXPECT_GE(location, book.first);
      EXPECT_LE(location, book.last);
      EXPECT_LE(ToSeptets(entry.name).size(), static_cast<std::size_t>(book.name_length)) << location;
      EXPECT_EQ(FromSeptets(ToSeptets(entry.name)), entry.name) << location;
      EXPECT_TRUE(IsDialNumber(entry.number)) << entry.number;
      EXPECT_EQ(entry.type == kInternational, entry.number.starts_with('+')) << entry.number;
    }
  }
}

TEST(SampleMemory, HasMessagesOfEveryKindThatCanBeRead) {
  const PhoneMemory memory = SampleMemory();
  std::set<MessageStatus> statuses;
  std::set<TpduKind> kinds;
  std::size_t count = 0;
  for (const MessageStore& store : memory.stores) {
    for (const auto& [index, message] : store.messages) {
      const auto tpdu = ParseStored(message);
      ASSERT_TRUE(tpdu.has_value()) << message.pdu;
      statuses.insert(message.status);
      kinds.insert(tpdu->kind);
      ++count;
    }
  }
  EXPECT_EQ(count, 8U);
  EXPECT_EQ(statuses.size(), 4U);
  EXPECT_EQ(kinds, (std::set{TpduKind::kDeliver, TpduKind::kSubmit, TpduKind::kStatusReport}));
}

}  // namespace
}  // namespace celldesk::simulator
