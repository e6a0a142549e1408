#include <gtest/gtest.h>

#include <chrono>
#include <string>

#include "phonebook_fixture.h"
#include "support/scripted_session.h"

namespace celldesk {
namespace {

using std::chrono::milliseconds;
using namespace std::chrono_literals;
using Selection = std::vector<int>;

const std::string kSelect = "> AT+CPBS=\"SM\"\\r\\n\n< OK\n";

/// A book of unchanged, empty slots.
AddressBook CleanBook(int first, int last) {
  AddressBook book = QueriedBook(first, last);
  EXPECT_EQ(book.Resize(book.memory().Capacity()), S_OK);
  book.MarkAll(0);
  return book;
}

TEST(WritePhonebook, WritesAnEntryToTheIndexOfItsIdAndErasesByPosition) {
  ScriptedSession session(kSelect + R"(
    > AT+CPBW=9,"+420601123456",145,"Anna"\r
    < OK
    > AT+CPBW=7\r
    < OK
  )");
  AddressBook book = CleanBook(6, 8);
  Change(book, 0, u"Anna", u"+420601123456");
  book.At(0).id = u"9";
  book.Erase(1);
  EXPECT_EQ(WritePhonebook(session.engine, book, nullptr, std::nullopt), S_OK);
  EXPECT_EQ(book.At(0).flags, AddressEntry::kOccupied);
  EXPECT_EQ(book.At(1).flags, 0U);
  EXPECT_TRUE(session.waiter.pauses().empty());
}

// An answer was missed, and comes with that to the selection, whose own takes half a second more.
TEST(WritePhonebook, TakesNoLateAnswerForThatToAnEntry) {
  ScriptedSession session(R"(
    > AT+CPBS="SM"\r\n
    < OK
    = 500
    < OK
    > AT+CPBW=1\r
    < ERROR
  )");
  EXPECT_EQ(session.engine.WaitLine(session.engine.response(), 1ms), E_FAIL);
  AddressBook book = QueriedBook(1, 2);
  ASSERT_EQ(book.Resize(2), S_OK);
  book.Erase(0);
  EXPECT_EQ(WritePhonebook(session.engine, book, nullptr, std::nullopt), E_FAIL);
  EXPECT_TRUE(book.At(0).is_modified());
}

TEST(WritePhonebook, IsRefusedWhereTheLastAnswerToTheSelectionIs) {
  ScriptedSession session("> AT+CPBS=\"ME\"\\r\\n\n< OK\n= 500\n< ERROR\n");
  EXPECT_EQ(session.engine.WaitLine(session.engine.response(), 1ms), E_FAIL);
  AddressBook book = QueriedBook(1, 2, u"ME");
  EXPECT_EQ(WritePhonebook(session.engine, book, nullptr, std::nullopt), E_NOTIMPL);
}

TEST(WritePhonebook, WritesTheSameHoweverTheAnswersAreCut) {
  for (std::size_t size = 1; size <= 8; ++size) {
    ScriptedSession session(kSelect + "> AT+CPBW=1\\r\n< +NOISE: 1\n< OK\n> AT+CPBW=2\\r\n< OK\n");
    session.phone.set_chunk_size(size);
    AddressBook book = QueriedBook(1, 2);
    ASSERT_EQ(book.Resize(2), S_OK);
    EXPECT_EQ(WritePhonebook(session.engine, book, nullptr, std::nullopt), S_OK) << size;
    EXPECT_FALSE(book.IsModified()) << size;
    EXPECT_EQ(session.waiter.now(), 0ms) << size;
  }
}

struct TypeCase {
  std::u16string number;
  const char* sent;
};

class WritePhonebookType : public testing::TestWithParam<TypeCase> {};

TEST_P(WritePhonebookType, FollowsFromAPlusInTheNumber) {
  ScriptedSession session(kSelect + "> AT+CPBW=1," + GetParam().sent + ",\"A\"\\r\n< OK\n");
  AddressBook book = CleanBook(1, 2);
  Change(book, 0, u"A", GetParam().number);
  book.At(0).number_type = 77;
  EXPECT_EQ(WritePhonebook(session.engine, book, nullptr, std::nullopt), S_OK);
}

INSTANTIATE_TEST_SUITE_P(Numbers, WritePhonebookType,
                         testing::Values(TypeCase{u"+420601", "\"+420601\",145"},
                                         TypeCase{u"00420601", "\"00420601\",129"},
                                         TypeCase{u"601+2", "\"601+2\",145"}, TypeCase{u"", "\"\",129"}));

TEST(WritePhonebook, SendsNoCommandForUnchangedSlots) {
  ScriptedSession session(kSelect);
  AddressBook book = CleanBook(1, 30);
  Change(book, 3, u"same", u"1");
  book.At(3).flags = AddressEntry::kOccupied;
  EXPECT_EQ(WritePhonebook(session.engine, book, nullptr, std::nullopt), S_OK);
  EXPECT_EQ(session.phone.writes().size(), 1U);
}

TEST(WritePhonebook, ErasesEverySlotOfAnEmptiedBook) {
  ScriptedSession session(kSelect + R"(
    > AT+CPBW=1\r
    < OK
    > AT+CPBW=2\r
    < OK
    > AT+CPBW=3\r
    < OK
  )");
  AddressBook book = QueriedBook(1, 3);
  ASSERT_EQ(book.Resize(3), S_OK);
  EXPECT_EQ(WritePhonebook(session.engine, book, nullptr, std::nullopt), S_OK);
  EXPECT_FALSE(book.IsModified());
}

TEST(WritePhonebook, ShowsItsProgressByIndexAndCapacity) {
  ScriptedSession session(kSelect + "> AT+CPBW=12\\r\n< OK\n");
  AddressBook book = CleanBook(11, 13);
  book.Erase(1);
  RecordingView view;
  EXPECT_EQ(WritePhonebook(session.engine, book, &view, std::nullopt), S_OK);
  EXPECT_EQ(view.progress, (std::vector<std::string>{"range 1 3", "11 of 3", "at 11", "12 of 3", "at 12",
                                                     "13 of 3", "at 13"}));
}

TEST(WritePhonebook, WritesOnlyTheSelectionInListOrder) {
  ScriptedSession session(kSelect + R"(
    > AT+CPBW=3,"3",129,"C"\r
    < OK
    > AT+CPBW=1\r
    < OK
  )");
  AddressBook book = CleanBook(1, 4);
  book.Erase(0);
  Change(book, 1, u"B", u"2");
  Change(book, 2, u"C", u"3");
  RecordingView view;
  EXPECT_EQ(WritePhonebook(session.engine, book, &view, Selection{2, 3, 0}), S_OK);
  EXPECT_TRUE(book.At(1).is_modified());
  EXPECT_FALSE(book.At(2).is_modified());
  EXPECT_EQ(view.progress,
            (std::vector<std::string>{"range 1 4", "1 of 3", "at 1", "2 of 3", "at 2", "3 of 3", "at 3"}));
}

TEST(WritePhonebook, WritesNothingForAnEmptySelection) {
  ScriptedSession session(kSelect);
  AddressBook book = QueriedBook(1, 3);
  ASSERT_EQ(book.Resize(3), S_OK);
  EXPECT_EQ(WritePhonebook(session.engine, book, nullptr, Selection{}), S_OK);
  EXPECT_TRUE(book.IsModified());
}

TEST(WritePhonebook, PassesOverSelectedRowsThatAreNotInTheBook) {
  ScriptedSession session(kSelect + "> AT+CPBW=1\\r\n< OK\n");
  AddressBook book = CleanBook(1, 2);
  book.Erase(0);
  EXPECT_EQ(WritePhonebook(session.engine, book, nullptr, Selection{-1, 2, 0}), S_OK);
  EXPECT_EQ(book.count(), 2);
}

TEST(WritePhonebook, StopsAtTheFirstErrorAndKeepsTheRestModified) {
  ScriptedSession session(kSelect + R"(
    > AT+CPBW=1\r
    < OK
    > AT+CPBW=2\r
    < ERROR
  )");
  AddressBook book = QueriedBook(1, 3);
  ASSERT_EQ(book.Resize(3), S_OK);
  EXPECT_EQ(WritePhonebook(session.engine, book, nullptr, std::nullopt), E_FAIL);
  EXPECT_FALSE(book.At(0).is_modified());
  EXPECT_TRUE(book.At(1).is_modified());
  EXPECT_TRUE(book.At(2).is_modified());
  EXPECT_EQ(session.engine.response().text(), u"ERROR");
}

TEST(WritePhonebook, ARepeatedUploadGoesOnWhereTheFirstOneStopped) {
  ScriptedSession session(kSelect + "> AT+CPBW=1\\r\n< OK\n> AT+CPBW=2\\r\n< ERROR\n" + kSelect +
                          "> AT+CPBW=2\\r\n< OK\n");
  AddressBook book = QueriedBook(1, 2);
  ASSERT_EQ(book.Resize(2), S_OK);
  EXPECT_EQ(WritePhonebook(session.engine, book, nullptr, std::nullopt), E_FAIL);
  EXPECT_EQ(WritePhonebook(session.engine, book, nullptr, std::nullopt), S_OK);
  EXPECT_FALSE(book.IsModified());
}

TEST(WritePhonebook, StopsAnUploadOfTheSelectionAtAnErrorToo) {
  ScriptedSession session(kSelect + "> AT+CPBW=2\\r\n< ERROR\n");
  AddressBook book = QueriedBook(1, 2);
  ASSERT_EQ(book.Resize(2), S_OK);
  EXPECT_EQ(WritePhonebook(session.engine, book, nullptr, Selection{1, 0}), E_FAIL);
  EXPECT_TRUE(book.At(0).is_modified());
}

TEST(WritePhonebook, WaitsForEveryLineFor8Seconds) {
  ScriptedSession session(kSelect + R"(
    > AT+CPBW=1\r
    = 7999
    < +NOISE: 1
    = 7999
    < OK
    > AT+CPBW=2\r
  )");
  AddressBook book = QueriedBook(1, 2);
  ASSERT_EQ(book.Resize(2), S_OK);
  EXPECT_EQ(WritePhonebook(session.engine, book, nullptr, std::nullopt), E_FAIL);
  EXPECT_EQ(session.waiter.now(), 2 * 7999ms + 8000ms);
  EXPECT_FALSE(book.At(0).is_modified());
  EXPECT_TRUE(book.At(1).is_modified());
}

TEST(WritePhonebook, TakesACmeErrorForSilence) {
  ScriptedSession session(kSelect + "> AT+CPBW=1\\r\n< +CME ERROR: 27\n");
  AddressBook book = QueriedBook(1, 2);
  ASSERT_EQ(book.Resize(2), S_OK);
  EXPECT_EQ(WritePhonebook(session.engine, book, nullptr, std::nullopt), E_FAIL);
  EXPECT_EQ(session.waiter.now(), 8000ms);
  EXPECT_EQ(session.engine.response().text(), u"+CME ERROR: 27");
}

TEST(WritePhonebook, DropsStaleLinesBeforeTheFirstEntry) {
  ScriptedSession session("> AT+CPBS=\"SM\"\\r\\n\n< OK\n< ERROR\n> AT+CPBW=1\\r\n< OK\n");
  AddressBook book = CleanBook(1, 2);
  book.Erase(0);
  EXPECT_EQ(WritePhonebook(session.engine, book, nullptr, std::nullopt), S_OK);
}

TEST(WritePhonebook, EndsWhenTheMemoryIsRejected) {
  ScriptedSession session("> AT+CPBS=\"SM\"\\r\\n\n< ERROR\n");
  AddressBook book = QueriedBook(1, 2);
  ASSERT_EQ(book.Resize(2), S_OK);
  RecordingView view;
  EXPECT_EQ(WritePhonebook(session.engine, book, &view, std::nullopt), E_NOTIMPL);
  EXPECT_TRUE(view.progress.empty());
}

TEST(WritePhonebook, EndsWhenACommandCannotBeWritten) {
  ScriptedSession session(kSelect);
  AddressBook book = QueriedBook(1, 2);
  ASSERT_EQ(book.Resize(2), S_OK);
  auto answer = std::move(session.ports.line.on_write);
  session.ports.line.on_write = [&](std::span<const std::uint8_t> bytes) {
    if (!session.phone.finished()) return answer(bytes);
    session.ports.line.write_status = E_FAIL;
  };
  EXPECT_EQ(WritePhonebook(session.engine, book, nullptr, std::nullopt), E_FAIL);
  EXPECT_EQ(session.waiter.now(), 0ms);
  EXPECT_TRUE(book.At(0).is_modified());
}

TEST(WritePhonebook, SendsQuotesAndForeignCharactersAsTheyStand) {
  ScriptedSession session(kSelect + R"(
    > AT+CPBW=1,"1"2",129,"An"na \x04\x00$\x0d"\r
    < OK
  )");
  AddressBook book = CleanBook(1, 2);
  Change(book, 0, u"An\"na \u00e8@\u0424\u010d", u"1\"2");
  // The alphabet has no U+0424 and no U+010D: their low bytes are sent.
  EXPECT_EQ(WritePhonebook(session.engine, book, nullptr, std::nullopt), S_OK);
}

TEST(WritePhonebook, StopsAtAnEntryThatDoesNotFitACommand) {
  ScriptedSession session(kSelect + "> AT+CPBW=1\\r\n< OK\n");
  AddressBook book = QueriedBook(1, 3);
  ASSERT_EQ(book.Resize(3), S_OK);
  Change(book, 1, std::u16string(1000, u'n'), u"1");
  EXPECT_EQ(WritePhonebook(session.engine, book, nullptr, std::nullopt), E_FAIL);
  EXPECT_FALSE(book.At(0).is_modified());
  EXPECT_TRUE(book.At(1).is_modified());
  EXPECT_TRUE(book.At(2).is_modified());
}

TEST(WritePhonebook, SendsACommandOf511Characters) {
  const std::size_t around = std::string("AT+CPBW=1,\"\",129,\"\"\r").size();
  const std::string name(511 - around, 'n');
  ScriptedSession session(kSelect + "> AT+CPBW=1,\"\",129,\"" + name + "\"\\r\n< OK\n");
  AddressBook book = CleanBook(1, 2);
  Change(book, 0, std::u16string(name.begin(), name.end()), u"");
  EXPECT_EQ(WritePhonebook(session.engine, book, nullptr, std::nullopt), S_OK);
  book.At(0).name = std::u16string(name.begin(), name.end()) + u'n';
  book.At(0).flags |= AddressEntry::kModified;
  session.phone.Load(kSelect);
  EXPECT_EQ(WritePhonebook(session.engine, book, nullptr, std::nullopt), E_FAIL);
}

}  // namespace
}  // namespace celldesk
