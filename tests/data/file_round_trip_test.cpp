#include <gtest/gtest.h>

#include <random>

#include "book_fixture.h"
#include "data/address_book_file.h"
#include "data/diacritics.h"
#include "data/sms_file.h"
#include "support/fake_file_system.h"
#include "util/windows1250.h"

namespace celldesk {
namespace {

constexpr std::u16string_view kPath = u"file";

/// What a file of windows-1250 keeps of a text.
std::u16string Kept(std::u16string text) {
  for (char16_t& character : text) character = FromWindows1250(ToWindows1250(character));
  return text;
}

/// Any text, but none that begins with a line end in its file.
std::u16string AnyText(std::mt19937& random, std::size_t longest) {
  constexpr std::u16string_view kSpecial = u"#; @/\r\n\u010D\u0161\u20AC\u0142";
  std::u16string text;
  for (std::size_t length = random() % (longest + 1); text.size() < length;) {
    const bool special = random() % 3 == 0;
    text += special ? kSpecial[random() % kSpecial.size()] : static_cast<char16_t>(random() % 0x250);
  }
  while (Kept(text).starts_with(u"\r\n")) text.erase(0, 2);
  return text;
}

AddressBook AnyBook(std::mt19937& random) {
  AddressBook book(u"SM", true);
  book.memory().first = static_cast<int>(random() % 20) - 5;
  book.memory().last = book.memory().first + static_cast<int>(random() % 60);
  EXPECT_EQ(book.Resize(book.memory().Capacity()), S_OK);
  for (int position = 0; position < book.count(); ++position) {
    if (random() % 2 == 0) continue;
    AddressEntry& entry = book.At(position);
    entry.id = DecimalText(book.memory().IndexAt(position));
    entry.name = AnyText(random, 20);
    entry.number = AnyText(random, 20);
    entry.flags = AddressEntry::kOccupied;
  }
  return book;
}

TEST(AddressBookFileProperty, ABookComesBackButForForeignLettersAndDiacritics) {
  std::mt19937 random(20031105);
  FakeFileSystem files;
  for (int round = 0; round < 300; ++round) {
    const AddressBook book = AnyBook(random);
    ASSERT_EQ(WriteAddressBookFile(files, kPath, book), S_OK);
    AddressBook back(u"SM", true);
    const auto choose = [&back](std::u16string_view) { return AddressBookTarget{&back, nullptr}; };
    ASSERT_EQ(ReadAddressBookFile(files, kPath, choose), S_OK);
    ASSERT_EQ(back.memory().first, book.memory().first);
    ASSERT_EQ(back.memory().last, book.memory().last);
    ASSERT_LE(back.count(), book.count());
    for (int position = 0; position < book.count(); ++position) {
      const AddressEntry& entry = book.entries()[static_cast<std::size_t>(position)];
      const AddressEntry& read = back.At(position);
      ASSERT_EQ(read.is_occupied(), entry.is_occupied());
      if (!entry.is_occupied()) continue;
      ASSERT_TRUE(read.is_modified());
      ASSERT_EQ(read.id, entry.id);
      ASSERT_EQ(read.name, WithoutDiacritics(Kept(std::u16string(entry.name))));
      ASSERT_EQ(read.number, Kept(std::u16string(entry.number)));
    }
  }
}

/// PDUs of each kind: received, report, outgoing without and with validity.
struct SamplePdu {
  std::u16string_view text;
  int octets;
  int storage_status;
};
constexpr SamplePdu kSamples[] = {
    {u"07913366003051F5040B913366304381F900005180719120348004D4F29C0E", 23, 0},
    {u"0006D60B911326880736F4111011719551401110117195714000", 25, 1},
    {u"11000C912460102143650000A702C834", 16, 2},
    {u"01000B819999999999F90000024831", 15, 3},
};

std::u16string Sentence(int number) { return number == 124 ? u"SUCCESS %#2x; %s %s" : u"no # %#2x %s %s"; }

std::unique_ptr<SmsMessage> AnyMessage(std::mt19937& random) {
  const SamplePdu& sample = kSamples[random() % std::size(kSamples)];
  auto message = std::make_unique<SmsMessage>();
  message->flags = kMessageInUse;
  message->storage_status = sample.storage_status;
  message->pdu_text = sample.text;
  message->tpdu_length = static_cast<std::int16_t>(sample.octets);
  EXPECT_EQ(message->Decode(), S_OK);
  return message;
}

/// One that waits to be sent and was never encoded.
std::unique_ptr<SmsMessage> AnyDraft(std::mt19937& random) {
  auto message = std::make_unique<SmsMessage>();
  message->flags = kMessageInUse | kMessageNew | kMessageToSend;
  message->storage_status = kStoredUnsent;
  message->first_octet = 0x11;
  message->submit.toa = 0x91;
  message->submit.number = u"420601123456";
  message->text = AnyText(random, 200);
  return message;
}

class SmsFileProperty : public testing::Test {
 protected:
  std::string Written(const SmsStore& store) {
    std::vector<const SmsMessage*> messages;
    for (int position = 0; position < store.count(); ++position) messages.push_back(&store.At(position));
    EXPECT_EQ(WriteSmsFile(files_, kPath, u"Inbox", messages, Sentence), S_OK);
    return files_.files[std::u16string(kPath)];
  }
  void ReadBack(SmsStore& store) {
    ASSERT_EQ(ReadSmsFile(files_, kPath, {},
                          [&](std::u16string_view) {
                            return SmsTarget{&store, nullptr};
                          }),
              S_OK);
  }

  FakeFileSystem files_;
  std::mt19937 random_{20031106};
};

void ExpectSame(const SmsMessage& read, const SmsMessage& message) {
  EXPECT_EQ(read.pdu_text, message.pdu_text);
  EXPECT_EQ(read.tpdu_length, message.tpdu_length);
  EXPECT_EQ(read.storage_status, message.storage_status);
  EXPECT_EQ(read.first_octet, message.first_octet);
  const bool is_report = message.type() == SmsType::kStatusReport;
  EXPECT_TRUE(is_report || read.text == message.text);
  EXPECT_EQ(read.deliver.number, message.deliver.number);
  EXPECT_TRUE(message.type() != SmsType::kSubmit || read.submit.number == message.submit.number);
  EXPECT_EQ(read.report.status, message.report.status);
}

TEST_F(SmsFileProperty, AFolderOfEveryKindComesBack) {
  for (int round = 0; round < 100; ++round) {
    SmsStore store, back;
    for (std::size_t count = random_() % 30; count > 0; --count) store.Append(AnyMessage(random_));
    const std::string text = Written(store);
    ReadBack(back);
    ASSERT_EQ(back.count(), store.count());
    for (int position = 0; position < store.count(); ++position)
      ExpectSame(back.At(position), store.At(position));
    ASSERT_EQ(Written(back), text);
  }
}

TEST_F(SmsFileProperty, DraftsComeBackButForForeignLetters) {
  for (int round = 0; round < 100; ++round) {
    SmsStore store, back;
    for (std::size_t count = random_() % 10; count > 0; --count) store.Append(AnyDraft(random_));
    Written(store);
    ReadBack(back);
    ASSERT_EQ(back.count(), store.count());
    for (int position = 0; position < store.count(); ++position) {
      EXPECT_EQ(back.At(position).text, Kept(store.At(position).text));
      EXPECT_EQ(back.At(position).submit.number, store.At(position).submit.number);
      EXPECT_EQ(back.At(position).type(), SmsType::kSubmit);
    }
  }
}

}  // namespace
}  // namespace celldesk
