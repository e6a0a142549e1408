// The two views through which commands see phonebooks and message stores.

#include <gtest/gtest.h>

#include "simulator/message_memory.h"
#include "simulator/phonebook_view.h"

namespace celldesk::simulator {
namespace {

Phone PhoneWith(std::string_view profiles) {
  Phone phone;
  phone.profile = MakeProfile(profiles).value_or(Profile());
  phone.now = [] { return PhoneSeconds{0}; };
  return phone;
}

void Fill(Phone& phone, const std::vector<int>& locations) {
  Phonebook& book = *phone.memory.FindPhonebook("SM");
  for (const int location : locations) book.entries[location] = {"1", 129, u"x"};
}

TEST(PhonebookView, ABookThatIsMissingOrHiddenDoesNotExist) {
  Phone phone = PhoneWith("no-me");
  EXPECT_TRUE(PhonebookView(phone, "SM").exists());
  EXPECT_FALSE(PhonebookView(phone, "ME").exists());
  EXPECT_FALSE(PhonebookView(phone, "XX").exists());
  EXPECT_EQ(PhonebookView::Names(phone), (std::vector<std::string>{"SM", "ON", "DC", "RC", "MC"}));
}

TEST(PhonebookView, CountsWhatIsInItsRange) {
  Phone phone = PhoneWith("default");
  Fill(phone, {1, 250, 251, 999});
  const PhonebookView book(phone, "SM");
  EXPECT_EQ(book.used(), 2);
  EXPECT_EQ(book.total(), 250);
  EXPECT_TRUE(book.InRange(250));
  EXPECT_FALSE(book.InRange(251));
  EXPECT_FALSE(book.InRange(0));
}

TEST(PhonebookView, FindsTheFirstFreeLocation) {
  Phone phone = PhoneWith("default");
  phone.memory.FindPhonebook("SM")->last = 3;
  EXPECT_EQ(PhonebookView(phone, "SM").FreeLocation(), 1);
  Fill(phone, {1, 3});
  EXPECT_EQ(PhonebookView(phone, "SM").FreeLocation(), 2);
  Fill(phone, {2});
  EXPECT_FALSE(PhonebookView(phone, "SM").FreeLocation().has_value());
}

TEST(PhonebookView, AClosedBookHasRoomForWhatIsThereOnly) {
  Phone phone = PhoneWith("default");
  Fill(phone, {1, 2});
  phone.rooms["book SM"] = 2;
  PhonebookView book(phone, "SM");
  EXPECT_TRUE(book.HasRoomFor(2));
  EXPECT_FALSE(book.HasRoomFor(3));
  book.Erase(2);
  EXPECT_TRUE(book.HasRoomFor(3));
}

TEST(PhonebookView, TheHabitsOfThePhoneChangeTheLimitsOfTheMainBooks) {
  Phone phone = PhoneWith("huge-range");
  EXPECT_EQ(PhonebookView(phone, "SM").RangeText(), "(1-65535)");
  EXPECT_EQ(PhonebookView(phone, "ME").limits().name_length, 100);
  EXPECT_EQ(PhonebookView(phone, "ON").RangeText(), "(1-5)");
  phone.profile.single_slot = true;
  EXPECT_EQ(PhonebookView(phone, "SM").RangeText(), "(1-1)");
}

StoredMessage Message(const std::string& pdu) { return {MessageStatus::kReceivedRead, pdu}; }

TEST(MessageMemory, AMemoryThatIsMissingOrHiddenDoesNotExist) {
  Phone phone = PhoneWith("no-me");
  EXPECT_TRUE(MessageMemory(phone, "SM").exists());
  EXPECT_FALSE(MessageMemory(phone, "ME").exists());
  EXPECT_FALSE(MessageMemory(phone, "MT").exists());
  EXPECT_EQ(MessageMemory::Names(phone), std::vector<std::string>{"SM"});
}

TEST(MessageMemory, FillsGapsAndThenStops) {
  Phone phone = PhoneWith("default");
  phone.memory.FindStore("SM")->capacity = 3;
  phone.memory.FindStore("SM")->messages[2] = Message("00");
  MessageMemory memory(phone, "SM");
  EXPECT_EQ(memory.Add(Message("01")), 1);
  EXPECT_EQ(memory.Add(Message("02")), 3);
  EXPECT_FALSE(memory.Add(Message("03")).has_value());
  EXPECT_EQ(memory.Indexes(), (std::vector{1, 2, 3}));
  EXPECT_TRUE(memory.Remove(2));
  EXPECT_FALSE(memory.Remove(2));
  EXPECT_EQ(memory.Add(Message("04")), 2);
  EXPECT_EQ(memory.Find(2)->pdu, "04");
  EXPECT_EQ(memory.Find(9), nullptr);
}

TEST(MessageMemory, ShowsNothingBeyondItsCapacity) {
  Phone phone = PhoneWith("one-slot");
  phone.memory.FindStore("SM")->messages[1] = Message("00");
  phone.memory.FindStore("SM")->messages[2] = Message("01");
  MessageMemory memory(phone, "SM");
  EXPECT_EQ(memory.used(), 1);
  EXPECT_EQ(memory.capacity(), 1);
  EXPECT_EQ(memory.Find(2), nullptr);
  EXPECT_FALSE(memory.Remove(2));
}

TEST(MessageMemory, ShiftsItsIndexes) {
  Phone phone = PhoneWith("index-zero");
  MessageMemory memory(phone, "SM");
  EXPECT_EQ(memory.Add(Message("00")), 0);
  EXPECT_EQ(memory.Find(0)->pdu, "00");
  EXPECT_EQ(phone.memory.FindStore("SM")->messages.count(1), 1U);
  EXPECT_TRUE(memory.Remove(0));
}

TEST(MessageMemory, AUnionFillsOneStoreAfterTheOther) {
  Phone phone = PhoneWith("mt-union");
  phone.memory.FindStore("SM")->capacity = 1;
  phone.memory.FindStore("ME")->capacity = 2;
  MessageMemory memory(phone, "MT");
  EXPECT_EQ(memory.capacity(), 3);
  EXPECT_EQ(memory.Add(Message("00")), 1);
  EXPECT_EQ(memory.Add(Message("01")), 2);
  EXPECT_EQ(memory.Add(Message("02")), 3);
  EXPECT_FALSE(memory.Add(Message("03")).has_value());
  EXPECT_EQ(phone.memory.FindStore("ME")->messages.at(2).pdu, "02");
  EXPECT_EQ(memory.Indexes(), (std::vector{1, 2, 3}));
  EXPECT_TRUE(memory.Remove(2));
  EXPECT_EQ(phone.memory.FindStore("ME")->messages.count(1), 0U);
}

}  // namespace
}  // namespace celldesk::simulator
