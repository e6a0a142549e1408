#include <gtest/gtest.h>

#include <chrono>

#include "phonebook_fixture.h"
#include "support/scripted_session.h"

namespace celldesk {
namespace {

using std::chrono::milliseconds;
using namespace std::chrono_literals;

constexpr const char* kWholeQuery = R"(
  > AT+CPBS=?\r\n
  < +CPBS: ("SM","ME")
  < OK
  > AT+CPBS="SM"\r\n
  < OK
  > AT+CPBR=?\r\n
  < +CPBR: (1-250),40,18
  < OK
)";

TEST(SelectPhonebook, SelectsTheBooksOwnMemory) {
  ScriptedSession session(R"(
    > AT+CPBS="ME"\r\n
    < +NOISE: 1
    < OK
  )");
  EXPECT_EQ(SelectPhonebook(session.engine, AddressBook(u"ME", false)), S_OK);
  EXPECT_TRUE(session.waiter.pauses().empty());
}

TEST(SelectPhonebook, TakesErrorForAMemoryThatThePhoneRejects) {
  ScriptedSession session(R"(
    > AT+CPBS="ME"\r\n
    < ERROR
    > AT+CPBS="SM"\r\n
    < ERROR
  )");
  EXPECT_EQ(SelectPhonebook(session.engine, AddressBook(u"ME", false)), E_NOTIMPL);
  EXPECT_EQ(SelectPhonebook(session.engine, AddressBook(u"SM", true)), S_OK);
}

TEST(SelectPhonebook, FailsWhenThePhoneIsSilentFor8Seconds) {
  ScriptedSession session(R"(
    > AT+CPBS="ME"\r\n
    > AT+CPBS="SM"\r\n
  )");
  EXPECT_EQ(SelectPhonebook(session.engine, AddressBook(u"ME", false)), E_FAIL);
  EXPECT_EQ(session.waiter.now(), 8000ms);
  EXPECT_EQ(SelectPhonebook(session.engine, AddressBook(u"SM", true)), S_OK);
  EXPECT_EQ(session.waiter.now(), 16000ms);
}

TEST(SelectPhonebook, FailsWhenTheCommandCannotBeWritten) {
  ScriptedSession session;
  session.ports.line.write_status = E_FAIL;
  EXPECT_EQ(SelectPhonebook(session.engine, AddressBook(u"ME", false)), E_FAIL);
  EXPECT_EQ(SelectPhonebook(session.engine, AddressBook(u"SM", true)), S_OK);
}

TEST(QueryPhonebook, LearnsTheMemoriesAndTheSizeOfItsOwn) {
  ScriptedSession session(kWholeQuery);
  AddressBook book(u"SM", true);
  book.memory().supported = u"(\"old\")";
  EXPECT_EQ(QueryPhonebook(session.engine, book), S_OK);
  EXPECT_EQ(book.memory().supported, u"(\"SM\",\"ME\")");
  EXPECT_EQ(book.memory().first, 1);
  EXPECT_EQ(book.memory().last, 250);
  EXPECT_EQ(book.memory().number_length, 40);
  EXPECT_EQ(book.memory().name_length, 18);
  EXPECT_EQ(book.memory().Capacity(), 250);
  EXPECT_EQ(session.waiter.pauses(), (std::vector<milliseconds>{500ms}));
}

TEST(QueryPhonebook, LearnsTheSameHoweverTheAnswersAreCut) {
  for (std::size_t size = 1; size <= 40; ++size) {
    ScriptedSession session(kWholeQuery);
    session.phone.set_chunk_size(size);
    AddressBook book(u"SM", false);
    EXPECT_EQ(QueryPhonebook(session.engine, book), S_OK) << size;
    EXPECT_EQ(book.memory().supported, u"(\"SM\",\"ME\")") << size;
    EXPECT_EQ(book.memory().last, 250) << size;
    EXPECT_EQ(book.memory().name_length, 18) << size;
    EXPECT_EQ(session.waiter.now(), 500ms) << size;
  }
}

TEST(QueryPhonebook, PausesBeforeTheSizeIsAsked) {
  ScriptedSession session(kWholeQuery);
  AddressBook book(u"SM", true);
  std::vector<milliseconds> when;
  auto answer = std::move(session.ports.line.on_write);
  session.ports.line.on_write = [&](std::span<const std::uint8_t> bytes) {
    when.push_back(session.waiter.now());
    answer(bytes);
  };
  EXPECT_EQ(QueryPhonebook(session.engine, book), S_OK);
  EXPECT_EQ(when, (std::vector<milliseconds>{0ms, 0ms, 500ms}));
}

TEST(QueryPhonebook, WaitsForEveryLineFor8Seconds) {
  ScriptedSession session(kWholeQuery);
  AddressBook book(u"SM", true);
  EXPECT_EQ(QueryPhonebook(session.engine, book), S_OK);
  ASSERT_FALSE(session.waiter.waits().empty());
  for (const ManualWaiter::Wait& wait : session.waiter.waits()) EXPECT_EQ(wait.timeout, 8000ms);
}

TEST(QueryPhonebook, GoesOnWhenTheListOfMemoriesIsRefused) {
  ScriptedSession session(R"(
    > AT+CPBS=?\r\n
    < ERROR
    > AT+CPBS="ME"\r\n
    < OK
    > AT+CPBR=?\r\n
    < +CPBR: (1-50),20,10
    < OK
  )");
  AddressBook book(u"ME", false);
  book.memory().supported = u"(\"SM\")";
  EXPECT_EQ(QueryPhonebook(session.engine, book), S_OK);
  EXPECT_EQ(book.memory().supported, u"");
  EXPECT_EQ(book.memory().last, 50);
}

TEST(QueryPhonebook, FailsWhenTheListOfMemoriesIsNeverAnswered) {
  ScriptedSession session("> AT+CPBS=?\\r\\n");
  AddressBook book(u"ME", false);
  EXPECT_EQ(QueryPhonebook(session.engine, book), E_FAIL);
  EXPECT_EQ(session.waiter.now(), 8000ms);
}

TEST(QueryPhonebook, GoesOnAfterASilentListWhenSelectionErrorsAreIgnored) {
  ScriptedSession session(R"(
    > AT+CPBS=?\r\n
    > AT+CPBS="SM"\r\n
    < ERROR
    > AT+CPBR=?\r\n
    < +CPBR: (1-100),20,14
    < OK
  )");
  AddressBook book(u"SM", true);
  EXPECT_EQ(QueryPhonebook(session.engine, book), S_OK);
  EXPECT_EQ(book.memory().last, 100);
  EXPECT_EQ(session.waiter.now(), 9500ms);
}

TEST(QueryPhonebook, EndsWhenThePhoneRejectsTheMemory) {
  ScriptedSession session(R"(
    > AT+CPBS=?\r\n
    < +CPBS: ("SM")
    < OK
    > AT+CPBS="ME"\r\n
    < ERROR
  )");
  AddressBook book(u"ME", false);
  EXPECT_EQ(QueryPhonebook(session.engine, book), E_NOTIMPL);
  EXPECT_EQ(book.memory().supported, u"(\"SM\")");
  EXPECT_TRUE(session.waiter.pauses().empty());
  EXPECT_EQ(session.engine.response().text(), u"ERROR");
}

class QueryPhonebookSize : public testing::TestWithParam<std::pair<const char*, Status>> {};

TEST_P(QueryPhonebookSize, EndsWithTheAnswerToTheSizeQuery) {
  ScriptedSession session(R"(
    > AT+CPBS=?\r\n
    < OK
    > AT+CPBS="SM"\r\n
    < OK
    > AT+CPBR=?\r\n
  )" + std::string(GetParam().first));
  AddressBook book(u"SM", true);
  EXPECT_EQ(QueryPhonebook(session.engine, book), GetParam().second);
  EXPECT_EQ(book.memory().first, 1);
  EXPECT_EQ(book.memory().last, 0);
}

INSTANTIATE_TEST_SUITE_P(Answers, QueryPhonebookSize,
                         testing::Values(std::pair("< OK", S_OK), std::pair("< ERROR", E_FAIL),
                                         std::pair("", E_FAIL), std::pair("< +CME ERROR: 10", E_FAIL),
                                         std::pair("< ^BOOT: 1\n< OK", S_OK)));

TEST(QueryPhonebook, NeverSeesACmeErrorButATimeOut) {
  ScriptedSession session(R"(
    > AT+CPBS=?\r\n
    < OK
    > AT+CPBS="ME"\r\n
    < +CME ERROR: 10
  )");
  AddressBook book(u"ME", false);
  EXPECT_EQ(QueryPhonebook(session.engine, book), E_FAIL);
  EXPECT_EQ(session.waiter.now(), 8000ms);
  EXPECT_EQ(session.engine.response().text(), u"+CME ERROR: 10");
}

TEST(QueryPhonebook, FailsByTimeOutWhenNothingCanBeWritten) {
  ScriptedSession session;
  session.ports.line.write_status = E_FAIL;
  AddressBook book(u"ME", false);
  EXPECT_EQ(QueryPhonebook(session.engine, book), E_FAIL);
  EXPECT_EQ(session.waiter.now(), 8000ms);
}

struct SizeCase {
  const char* reply;
  int first, last, number_length, name_length, capacity;
};

class QueryPhonebookRange : public testing::TestWithParam<SizeCase> {};

TEST_P(QueryPhonebookRange, TakesWhatThePhoneSays) {
  ScriptedSession session(R"(
    > AT+CPBS=?\r\n
    < OK
    > AT+CPBS="SM"\r\n
    < OK
    > AT+CPBR=?\r\n
    < )" + std::string(GetParam().reply) +
                          "\n< OK");
  AddressBook book(u"SM", true);
  EXPECT_EQ(QueryPhonebook(session.engine, book), S_OK);
  EXPECT_EQ(book.memory().first, GetParam().first);
  EXPECT_EQ(book.memory().last, GetParam().last);
  EXPECT_EQ(book.memory().number_length, GetParam().number_length);
  EXPECT_EQ(book.memory().name_length, GetParam().name_length);
  EXPECT_EQ(book.memory().Capacity(), GetParam().capacity);
}

INSTANTIATE_TEST_SUITE_P(Replies, QueryPhonebookRange,
                         testing::Values(SizeCase{"+CPBR: (1-250),40,18", 1, 250, 40, 18, 250},
                                         SizeCase{"+CPBR:(1-65535),20,100", 1, 65535, 20, 100, 65535},
                                         SizeCase{"+CPBR: (1-50),(),()", 1, 50, 0, 0, 50},
                                         SizeCase{"+CPBR: (1-50)", 1, 50, 0, 0, 50},
                                         SizeCase{"+CPBR: 1-250,40,18", 0, 0, 40, 18, 1},
                                         SizeCase{"+CPBR: (5-1),40,18", 5, 1, 40, 18, 0},
                                         SizeCase{"+CPBR: (1-99999999999),1,1", 1, 2147483647, 1, 1,
                                                  2147483647}));

}  // namespace
}  // namespace celldesk
