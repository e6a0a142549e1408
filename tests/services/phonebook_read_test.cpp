#include <gtest/gtest.h>

#include <chrono>
#include <string>

#include "phonebook_fixture.h"
#include "support/scripted_session.h"

namespace celldesk {
namespace {

using std::chrono::milliseconds;
using namespace std::chrono_literals;

const std::string kSelect = "> AT+CPBS=\"SM\"\\r\\n\n< OK\n";

std::string Line(int index) {
  return "< +CPBR: " + std::to_string(index) + ",\"" + std::to_string(1000LL + index) + "\",129,\"N" +
         std::to_string(index) + "\"\n";
}

/// A read command and an answer of the lines given.
std::string Block(int from, int to, const std::string& lines, const std::string& end = "< OK\n") {
  return "> AT+CPBR=" + std::to_string(from) + "," + std::to_string(to) + "\\r\\n\n" + lines + end;
}

TEST(ReadPhonebook, StoresAnInternationalNumberWithItsPlus) {
  ScriptedSession session(kSelect + Block(1, 5, "< +CPBR: 5,\"123456789012\",145,\"Anna\"\n"));
  AddressBook book = QueriedBook(1, 5);
  RecordingView view;
  EXPECT_EQ(ReadPhonebook(session.engine, book, &view), S_OK);
  const AddressEntry& entry = book.At(4);
  EXPECT_EQ(entry.id, u"5");
  EXPECT_EQ(entry.number, u"+123456789012");
  EXPECT_EQ(entry.number_type, 145);
  EXPECT_EQ(entry.name, u"Anna");
  EXPECT_EQ(entry.flags, 1U);
  EXPECT_EQ(view.rows, (std::vector<int>{4}));
  EXPECT_TRUE(book.loaded());
  EXPECT_FALSE(book.IsModified());
}

struct NumberCase {
  const char* line;
  std::u16string number;
  int type;
  std::u16string name;
};

class ReadPhonebookLine : public testing::TestWithParam<NumberCase> {};

TEST_P(ReadPhonebookLine, IsTakenAsItStands) {
  ScriptedSession session(kSelect + Block(1, 2, "< +CPBR: " + std::string(GetParam().line) + "\n"));
  AddressBook book = QueriedBook(1, 2);
  EXPECT_EQ(ReadPhonebook(session.engine, book, nullptr), S_OK);
  EXPECT_EQ(book.At(0).number, GetParam().number);
  EXPECT_EQ(book.At(0).number_type, GetParam().type);
  EXPECT_EQ(book.At(0).name, GetParam().name);
  EXPECT_TRUE(book.At(0).is_occupied());
}

INSTANTIATE_TEST_SUITE_P(
    Lines, ReadPhonebookLine,
    testing::Values(NumberCase{R"(1,"+331290909",145,"Fred")", u"+331290909", 145, u"Fred"},
                    NumberCase{R"(1,"0331290909",129,"Fred")", u"0331290909", 129, u"Fred"},
                    NumberCase{R"(1,"+331290909",129,"Fred")", u"+331290909", 129, u"Fred"},
                    NumberCase{R"(1,"",145,"Nobody")", u"+", 145, u"Nobody"},
                    NumberCase{R"(1,"+*#100#",255,"Mine")", u"+*#100#", 255, u"Mine"},
                    NumberCase{R"(1,"112",129,"Doe, John")", u"112", 129, u"Doe, John"},
                    NumberCase{R"(1,"112",129,"Sophia",)", u"112", 129, u"Sophia"},
                    NumberCase{R"(1,"112",129,"Robert Fisher)", u"112", 129, u"Robert Fisher"},
                    NumberCase{R"(1,"",,"No number")", u"", 0, u"No number"},
                    NumberCase{R"(1,,129,"Nothing")", u"", 129, u"Nothing"},
                    // A quote ends a text, wherever the phone puts it.
                    NumberCase{R"(1,"112",129,"An"na")", u"112", 129, u"An"},
                    NumberCase{R"(1,"1"2",129,"Anna")", u"1", 129, u"Anna"},
                    // What the alphabet does not know: an eight-bit byte and the letters' places.
                    NumberCase{R"(1,"112",129,"[\\]^\xE8\x80")", u"112", 129,
                               u"\u00C4\u00D6\u00D1\u00DC\uFFE8\uFF80"},
                    NumberCase{R"(1,"112")", u"112", 0, u""}, NumberCase{"1", u"", 0, u""}));

TEST(ReadPhonebook, ReadsInBlocksOf20) {
  std::string script = kSelect;
  for (int start = 1; start <= 221; start += 20) script += Block(start, start + 19, "");
  script += Block(241, 250, Line(250));
  ScriptedSession session(script);
  AddressBook book = QueriedBook(1, 250);
  EXPECT_EQ(ReadPhonebook(session.engine, book, nullptr), S_OK);
  EXPECT_EQ(book.count(), 250);
  EXPECT_EQ(book.At(249).name, u"N250");
}

TEST(ReadPhonebook, NeverReadsAMemoryOfOneSlot) {
  ScriptedSession session(kSelect);
  AddressBook book = QueriedBook(7, 7);
  EXPECT_EQ(ReadPhonebook(session.engine, book, nullptr), S_OK);
  EXPECT_EQ(book.count(), 1);
  EXPECT_FALSE(book.IsModified());
  EXPECT_TRUE(book.loaded());
}

TEST(ReadPhonebook, LeavesOutALastSlotThatBeginsABlock) {
  ScriptedSession session(kSelect + Block(1, 20, "") + Block(21, 40, Line(40)));
  AddressBook book = QueriedBook(1, 41);
  EXPECT_EQ(ReadPhonebook(session.engine, book, nullptr), S_OK);
  EXPECT_EQ(book.count(), 41);
}

TEST(ReadPhonebook, CountsPositionsFromTheFirstIndex) {
  ScriptedSession session(kSelect + Block(100, 102, Line(101)));
  AddressBook book = QueriedBook(100, 102);
  EXPECT_EQ(ReadPhonebook(session.engine, book, nullptr), S_OK);
  EXPECT_EQ(book.At(1).id, u"101");
}

TEST(ReadPhonebook, ReplacesWhatTheBookHeld) {
  ScriptedSession session(kSelect + Block(1, 3, Line(2)));
  AddressBook book = QueriedBook(1, 3);
  Change(book, 0, u"local", u"1");
  Change(book, 9, u"beyond", u"2");
  EXPECT_EQ(ReadPhonebook(session.engine, book, nullptr), S_OK);
  EXPECT_EQ(book.count(), 3);
  EXPECT_EQ(book.At(0).name, u"");
  EXPECT_EQ(book.At(0).flags, 0U);
  EXPECT_EQ(book.At(1).name, u"N2");
}

TEST(ReadPhonebook, RepaintsAfterEveryTenthEntryOfABlock) {
  std::string first;
  for (int index = 1; index <= 20; ++index) first += Line(index);
  std::string second;
  for (int index = 21; index <= 35; ++index) second += Line(index);
  ScriptedSession session(kSelect + Block(1, 20, first) + Block(21, 35, second));
  AddressBook book = QueriedBook(1, 35);
  RecordingView view;
  EXPECT_EQ(ReadPhonebook(session.engine, book, &view), S_OK);
  EXPECT_EQ(view.rows.size(), 35U);
  EXPECT_EQ(view.repainted_after, (std::vector<int>{10, 20, 30}));
  EXPECT_TRUE(view.progress.empty());
}

TEST(ReadPhonebook, DropsStaleLinesBeforeTheFirstBlock) {
  ScriptedSession session("> AT+CPBS=\"SM\"\\r\\n\n< OK\n< +CPBR: 2,\"1\",129,\"stale\"\n< OK\n" +
                          Block(1, 2, Line(1)));
  AddressBook book = QueriedBook(1, 2);
  EXPECT_EQ(ReadPhonebook(session.engine, book, nullptr), S_OK);
  EXPECT_EQ(book.At(0).name, u"N1");
  EXPECT_FALSE(book.At(1).is_occupied());
}

TEST(ReadPhonebook, WaitsForEveryLineOfABlockFor25Seconds) {
  ScriptedSession session(kSelect + Block(1, 2, "= 24999\n" + Line(1) + "= 24999\n" + Line(2) + "= 24999\n"));
  AddressBook book = QueriedBook(1, 2);
  EXPECT_EQ(ReadPhonebook(session.engine, book, nullptr), S_OK);
  EXPECT_EQ(book.At(1).name, u"N2");
  EXPECT_EQ(session.waiter.now(), 3 * 24999ms);
  EXPECT_TRUE(session.waiter.pauses().empty());
}

TEST(ReadPhonebook, SkipsNoiseAndEmptyLines) {
  ScriptedSession session(kSelect + Block(1, 2, "< +CMTI: \"SM\",3\n<\n" + Line(1) + "< ^BOOT:1,2\n"));
  AddressBook book = QueriedBook(1, 2);
  EXPECT_EQ(ReadPhonebook(session.engine, book, nullptr), S_OK);
  EXPECT_EQ(book.At(0).name, u"N1");
}

TEST(ReadPhonebook, GoesOnAfterAnErrorInABlock) {
  ScriptedSession session(kSelect + Block(1, 20, Line(1), "< ERROR\n") + Block(21, 30, Line(30)));
  AddressBook book = QueriedBook(1, 30);
  EXPECT_EQ(ReadPhonebook(session.engine, book, nullptr), S_OK);
  EXPECT_EQ(book.At(0).name, u"N1");
  EXPECT_EQ(book.At(29).name, u"N30");
}

TEST(ReadPhonebook, HasTheStatusOfTheLastBlock) {
  ScriptedSession session(kSelect + Block(1, 20, Line(1)) + Block(21, 30, Line(21), "< ERROR\n"));
  AddressBook book = QueriedBook(1, 30);
  EXPECT_EQ(ReadPhonebook(session.engine, book, nullptr), E_FAIL);
  EXPECT_EQ(book.At(20).name, u"N21");
  EXPECT_TRUE(book.loaded());
  EXPECT_EQ(session.engine.response().text(), u"ERROR");
}

TEST(ReadPhonebook, GoesOnAfterASilentBlock) {
  ScriptedSession session(kSelect + Block(1, 20, Line(1), "") + Block(21, 30, Line(21)));
  AddressBook book = QueriedBook(1, 30);
  EXPECT_EQ(ReadPhonebook(session.engine, book, nullptr), S_OK);
  EXPECT_EQ(session.waiter.now(), 25000ms);
  EXPECT_EQ(book.At(20).name, u"N21");
}

TEST(ReadPhonebook, FailsWhenTheLastBlockEndsInACmeError) {
  ScriptedSession session(kSelect + Block(1, 2, Line(1), "< +CME ERROR: 21\n"));
  AddressBook book = QueriedBook(1, 2);
  EXPECT_EQ(ReadPhonebook(session.engine, book, nullptr), E_FAIL);
  EXPECT_EQ(session.waiter.now(), 25000ms);
  EXPECT_EQ(book.At(0).name, u"N1");
}

TEST(ReadPhonebook, DoesNotTouchTheBookWhenTheMemoryIsRejected) {
  ScriptedSession session("> AT+CPBS=\"SM\"\\r\\n\n< ERROR\n");
  AddressBook book = QueriedBook(1, 2);
  Change(book, 0, u"local", u"1");
  EXPECT_EQ(ReadPhonebook(session.engine, book, nullptr), E_NOTIMPL);
  EXPECT_EQ(book.At(0).name, u"local");
  EXPECT_FALSE(book.loaded());
}

TEST(ReadPhonebook, EndsWhenABlockCannotBeAskedFor) {
  ScriptedSession session(kSelect);
  AddressBook book = QueriedBook(1, 2);
  auto answer = std::move(session.ports.line.on_write);
  session.ports.line.on_write = [&](std::span<const std::uint8_t> bytes) {
    if (!session.phone.finished()) return answer(bytes);
    session.ports.line.write_status = E_FAIL;
  };
  EXPECT_EQ(ReadPhonebook(session.engine, book, nullptr), E_FAIL);
  EXPECT_FALSE(book.loaded());
  EXPECT_EQ(session.waiter.now(), 0ms);
}

TEST(ReadPhonebook, RefusesAMemoryThatNoBookCanHold) {
  ScriptedSession session(kSelect);
  AddressBook book = QueriedBook(1, 99999999);
  Change(book, 0, u"local", u"1");
  EXPECT_EQ(ReadPhonebook(session.engine, book, nullptr), E_OUTOFMEMORY);
  EXPECT_EQ(book.count(), 1);
  EXPECT_EQ(book.At(0).name, u"local");
  EXPECT_FALSE(book.loaded());
}

TEST(ReadPhonebook, ReadsNothingFromARangeThatEndsBeforeItBegins) {
  ScriptedSession session(kSelect);
  AddressBook book = QueriedBook(5, 1);
  EXPECT_EQ(ReadPhonebook(session.engine, book, nullptr), S_OK);
  EXPECT_EQ(book.count(), 0);
}

TEST(ReadPhonebook, ReadsTheLastIndexesThatANumberCanHold) {
  ScriptedSession session(kSelect + Block(2147483646, 2147483647, Line(1)));
  AddressBook book = QueriedBook(2147483646, 2147483647);
  EXPECT_EQ(ReadPhonebook(session.engine, book, nullptr), S_OK);
  EXPECT_FALSE(book.At(0).is_occupied());
}

TEST(ReadPhonebook, GrowsForAnIndexBeyondTheMemory) {
  ScriptedSession session(kSelect + Block(1, 2, Line(4)));
  AddressBook book = QueriedBook(1, 2);
  RecordingView view;
  EXPECT_EQ(ReadPhonebook(session.engine, book, &view), S_OK);
  EXPECT_EQ(book.count(), 4);
  EXPECT_EQ(book.At(3).name, u"N4");
  EXPECT_EQ(book.At(2).flags, AddressEntry::kModified);
  EXPECT_EQ(book.At(3).flags, AddressEntry::kOccupied | AddressEntry::kModified)
      << "a fresh slot's own flag stays";
  EXPECT_EQ(view.rows, (std::vector<int>{3}));
}

TEST(ReadPhonebook, LeavesOutIndexesThatNoBookCanHave) {
  ScriptedSession session(kSelect + Block(1, 2,
                                          Line(2) + Line(0) + Line(-7) + Line(65538) + Line(2147483647) +
                                              "< +CPBR: -99999999999,\"1\",129,\"x\"\n"
                                              "< +CPBR: x,\"1\",129,\"x\"\n< +CPBR:\n"));
  AddressBook book = QueriedBook(1, 2);
  RecordingView view;
  EXPECT_EQ(ReadPhonebook(session.engine, book, &view), S_OK);
  EXPECT_EQ(book.count(), 2);
  EXPECT_EQ(book.At(1).name, u"N2");
  EXPECT_EQ(view.rows, (std::vector<int>{1}));
}

TEST(ReadPhonebook, TakesNamesAndNumbersOfAThousandCharacters) {
  const std::string name(1000, 'n');
  const std::string number(1000, '7');
  ScriptedSession session(kSelect + Block(1, 2, "< +CPBR: 1,\"" + number + "\",145,\"" + name + "\"\n"));
  AddressBook book = QueriedBook(1, 2);
  EXPECT_EQ(ReadPhonebook(session.engine, book, nullptr), S_OK);
  EXPECT_EQ(book.At(0).number, u'+' + std::u16string(1000, u'7'));
  EXPECT_EQ(book.At(0).name, std::u16string(1000, u'n'));
}

class ReadPhonebookInPieces : public testing::TestWithParam<std::size_t> {};

TEST_P(ReadPhonebookInPieces, GivesTheSameBook) {
  ScriptedSession session(kSelect + Block(1, 20, Line(1) + Line(7)) + Block(21, 22, Line(22)));
  session.phone.set_chunk_size(GetParam());
  AddressBook book = QueriedBook(1, 22);
  EXPECT_EQ(ReadPhonebook(session.engine, book, nullptr), S_OK);
  EXPECT_EQ(book.At(0).name, u"N1");
  EXPECT_EQ(book.At(6).number, u"1007");
  EXPECT_EQ(book.At(21).name, u"N22");
  EXPECT_EQ(session.waiter.now(), 0ms);
}

INSTANTIATE_TEST_SUITE_P(Sizes, ReadPhonebookInPieces, testing::Range<std::size_t>(1, 40));

TEST(ReadPhonebook, GivesTheSameBookHoweverTheAnswerIsCut) {
  const std::string answer =
      "\r\n+CPBR: 1,\"1001\",129,\"N1\"\r\n\r\n+CPBR: 2,\"1002\",129,\"N2\"\r\n\r\nOK\r\n";
  for (std::size_t cut = 1; cut < answer.size(); ++cut) {
    ScriptedSession session(kSelect);
    session.phone.Expect({"AT+CPBR=1,2\r\n", {{0ms, answer.substr(0, cut)}, {60ms, answer.substr(cut)}}});
    AddressBook book = QueriedBook(1, 2);
    EXPECT_EQ(ReadPhonebook(session.engine, book, nullptr), S_OK) << "cut at " << cut;
    EXPECT_EQ(book.At(0).name, u"N1") << "cut at " << cut;
    EXPECT_EQ(book.At(1).number, u"1002") << "cut at " << cut;
    EXPECT_LE(session.waiter.now(), 60ms) << "cut at " << cut;
  }
}

}  // namespace
}  // namespace celldesk
