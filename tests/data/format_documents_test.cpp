// The examples in the documents of the formats are files that the program reads.

#include <gtest/gtest.h>

#include "data/address_book_file.h"
#include "data/book_fixture.h"
#include "data/sms_file.h"
#include "support/document_examples.h"

namespace celldesk {
namespace {

/// The last block of a document, which stands for a file.
std::string ExampleOf(const std::string& document) {
  const std::vector<std::string> examples = DocumentExamples(document);
  return examples.empty() ? std::string() : examples.back();
}

FieldBytes Bytes(const std::string& text) {
  return {reinterpret_cast<const std::uint8_t*>(text.data()), text.size()};
}

TEST(AddressBookDocument, TheExampleIsReadAsItSays) {
  AddressBook book(u"SM", true);
  const std::string example = ExampleOf("adr.md");
  EXPECT_EQ(ReadAddressBook(Bytes(example),
                            [&book](std::u16string_view) {
                              return AddressBookTarget{&book, nullptr};
                            }),
            S_OK);
  EXPECT_EQ(Names(book), (std::vector<std::u16string>{u"Home", u"", u"", u"", u"", u"", u"A#B;C"}));
  EXPECT_EQ(book.At(0).number, u"+12345");
  EXPECT_EQ(book.At(6).number, u"112");
  EXPECT_EQ(book.memory().last, 250);
}

TEST(MessageDocument, TheExampleIsReadAsItSays) {
  SmsStore store;
  const std::string example = ExampleOf("sms.md");
  const auto choose = [&store](std::u16string_view folder) {
    EXPECT_EQ(folder, u"Outbox");
    return SmsTarget{&store, nullptr};
  };
  EXPECT_EQ(ReadMessages(Bytes(example), {}, choose), S_OK);
  ASSERT_EQ(store.count(), 2);
  EXPECT_EQ(store.At(0).submit.number, u"420601123456");
  EXPECT_EQ(store.At(0).text, u"Hi");
  EXPECT_EQ(store.At(0).flags & kMessageToSend, 0U);
  EXPECT_EQ(store.At(1).submit.number, u"420601123457");
  EXPECT_EQ(store.At(1).text, u"See you at 5");
  EXPECT_EQ(store.At(1).flags & kMessageToSend, kMessageToSend);
}

}  // namespace
}  // namespace celldesk
