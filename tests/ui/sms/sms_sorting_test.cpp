#include <gtest/gtest.h>

#include <algorithm>
#include <random>

#include "support/fake_locale.h"
#include "ui/framework/row_order.h"
#include "ui/framework/window.h"
#include "ui/sms/sample_messages.h"
#include "ui/sms_columns.h"

namespace celldesk {
namespace {

/// A folder's rows, sorted by a header.
class Folder : public Window {
 public:
  Folder(SmsColumns columns, const std::vector<SmsMessage>& messages)
      : columns_(columns), messages_(messages) {}

  void SetOrder(int header, bool names) {
    header_ = header;
    names_ = names;
  }
  int Compare(std::size_t record1, std::size_t record2) override {
    return columns_.Compare(messages_[record1], messages_[record2], header_, names_);
  }
  bool SortsLast(std::size_t record) override { return columns_.SortsLast(messages_[record], header_); }
  std::vector<std::uint64_t> SortKeys(std::span<const std::uint32_t> records, bool descending) override {
    std::vector<const SmsMessage*> pointers;
    for (const std::uint32_t record : records) pointers.push_back(&messages_[record]);
    return columns_.SortKeys(pointers, header_, names_, descending);
  }

 private:
  SmsColumns columns_;
  const std::vector<SmsMessage>& messages_;
  int header_ = 0;
  bool names_ = false;
};

template <typename Choice>
const Choice& OneOf(const std::vector<Choice>& choices, std::mt19937& random) {
  return choices[random() % choices.size()];
}

// Few values of each field, so that many are equal; days and months that do not exist; times never set.
DateTime RandomTime(std::mt19937& random) {
  const auto field = [&random](std::uint64_t limit) { return static_cast<std::uint16_t>(random() % limit); };
  const CalendarTime time{
      static_cast<std::uint16_t>(2025 + field(2)), field(14), 0, field(33), 9, 5, field(2),
      static_cast<std::uint16_t>(10 * field(20))};
  return {time, random() % 4 != 0};
}

SmsMessage RandomMessage(std::mt19937& random) {
  static const std::vector<std::u16string> numbers = {u"", u"0123", u"+447700900101", u"112"};
  static const std::vector<std::u16string> texts = {u"", u"Hello", u"hello", u"Bye", u"\u00C4rger"};
  SmsMessage message;
  message.flags = kMessageInUse;
  message.memory = static_cast<std::int16_t>(static_cast<int>(random() % 4) - 1);
  message.storage_status = static_cast<std::int32_t>(random() % 4);
  message.first_octet = static_cast<std::uint32_t>(random() % 32);
  message.text = OneOf(texts, random);
  message.submit.number = message.deliver.number = message.report.number = OneOf(numbers, random);
  message.submit.relative_validity = static_cast<std::uint8_t>(random() % 3 * 80);
  message.submit.absolute_validity = RandomTime(random);
  message.deliver.timestamp = RandomTime(random);
  message.report.timestamp = RandomTime(random);
  message.report.status = static_cast<std::uint32_t>(random() % 3);
  return message;
}

struct SmsSortingTest : testing::Test {
  SmsSortingTest() {
    AddressEntry& entry = sim.At(0);
    entry.name = u"Anna";
    entry.number = u"+447700900101";
    entry.flags = AddressEntry::kOccupied;
    std::mt19937 random(17);
    for (int i = 0; i < 300; ++i) messages.push_back(RandomMessage(random));
    for (std::uint32_t i = 0; i < messages.size(); ++i) rows.push_back(i);
    std::shuffle(rows.begin(), rows.end(), random);
  }

  SmsColumns Columns(SmsFolder folder) const { return {folder, books, locale}; }

  FakeLocale locale;
  AddressBook sim{u"SM", true}, phone{u"ME", false};
  AddressBooks books{sim, phone};
  std::vector<SmsMessage> messages;
  std::vector<std::uint32_t> rows;
};

TEST_F(SmsSortingTest, KeysGiveTheOrderOfCompareForEveryHeader) {
  for (const SmsFolder folder : {SmsFolder::kInbox, SmsFolder::kOutbox}) {
    Folder view(Columns(folder), messages);
    for (int header = 0; header <= 4; ++header) {
      for (const int choice : {0, 1, 2, 3}) {
        const bool names = choice % 2 == 1, descending = choice >= 2;
        view.SetOrder(header, names);
        ASSERT_EQ(RowsInOrder(view, rows, descending), RowsByCompare(view, rows, descending))
            << "folder " << static_cast<int>(folder) << ", header " << header << ", choice " << choice;
      }
    }
  }
}

TEST_F(SmsSortingTest, TheRecordsHaveTimesOfEveryKind) {
  const auto invalid = std::count_if(messages.begin(), messages.end(), [&](const SmsMessage& message) {
    return Columns(SmsFolder::kInbox).SortsLast(message, SmsColumns::kNumber);
  });
  EXPECT_GT(invalid, 30);
  EXPECT_LT(invalid, 270);
}

TEST_F(SmsSortingTest, ARecordThatIsGoneComesLast) {
  const std::vector<const SmsMessage*> pointers = {nullptr, &messages[0], &messages[1]};
  for (const bool descending : {false, true}) {
    const auto keys = Columns(SmsFolder::kInbox).SortKeys(pointers, SmsColumns::kBody, false, descending);
    EXPECT_GT(keys[0], std::max(keys[1], keys[2]));
  }
}

TEST_F(SmsSortingTest, RecordsWithAnInvalidTimeComeLastInBothDirections) {
  const SmsMessage valid = ReceivedRecord(u"0123", {2026, 1, 0, 4, 9, 5, 7, 0}, u"");
  const SmsMessage invalid = ReceivedRecord(u"0123", {2026, 15, 0, 4, 9, 5, 7, 0}, u"");
  const std::vector<const SmsMessage*> pointers = {&invalid, &valid};
  for (const bool descending : {false, true}) {
    const auto keys = Columns(SmsFolder::kInbox).SortKeys(pointers, SmsColumns::kNumber, false, descending);
    EXPECT_GT(keys[0], keys[1]);
  }
}

}  // namespace
}  // namespace celldesk
