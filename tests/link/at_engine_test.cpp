#include "link/at_engine.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

#include "support/memory/allocation_gate.h"
#include "support/scripted_session.h"
#include "util/number_text.h"

namespace celldesk {
namespace {

using namespace std::chrono_literals;
using testing::ElementsAre;
using testing::IsEmpty;

using Wait = ManualWaiter::Wait;

TEST(AtEngine, SendFormatsAndWritesExactlyOnce) {
  ScriptedSession session(R"(> AT+CPBW=3,"+491701",145,"Ann"\r)");
  EXPECT_EQ(session.engine.Send(u"AT+CPBW=%i,\"%s\",%i,\"%s\"\r", {3, u"+491701", 145, u"Ann"}), S_OK);
  EXPECT_EQ(session.phone.writes().size(), 1U);
}

TEST(AtEngine, SendConvertsThroughTheGsmAlphabet) {
  ScriptedSession session(R"(> \x00\x02\x11\x1B\x5B\xAC\x1A\r)");
  EXPECT_EQ(session.engine.Send(u"%s\r", {u"@$_\u00B9[\u20AC\x1A"}), S_OK);
}

TEST(AtEngine, SendNeitherFlushesNorWaits) {
  ScriptedSession session(R"(> AT\r)");
  session.link.ReceiveChunk(u"stale\r");
  EXPECT_EQ(session.engine.Send(u"AT\r"), S_OK);
  EXPECT_TRUE(session.link.line_event().IsSet());
  EXPECT_EQ(session.waiter.now(), 0ms);
}

TEST(AtEngine, TheLongestCommandHas511Characters) {
  ScriptedSession session;
  const std::u16string text(510, u'A');
  session.phone.Expect({std::string(510, 'A') + "\r", {}});
  EXPECT_EQ(session.engine.Send(u"%s\r", {text}), S_OK);
}

TEST(AtEngine, ALongerCommandIsNotSentAtAll) {
  ScriptedSession session;
  for (const std::size_t length : {511U, 512U, 1023U, 5000U}) {
    const std::u16string text(length, u'A');
    EXPECT_EQ(session.engine.Send(u"%s\r", {text}), E_FAIL) << length;
  }
  EXPECT_THAT(session.phone.writes(), IsEmpty());
}

TEST(AtEngine, SendFailsWhenTheWriteFailsOrTheLinkIsClosed) {
  ScriptedSession session;
  session.ports.line.write_status = E_FAIL;
  EXPECT_EQ(session.engine.Send(u"AT\r"), E_FAIL);
  session.ports.line.write_status = S_OK;
  EXPECT_EQ(session.link.Close(), S_OK);
  EXPECT_EQ(session.engine.Send(u"AT\r"), E_FAIL);
}

TEST(AtEngine, SendWithoutMemoryWritesNothing) {
  ScriptedSession session;
  AllocationGate gate;
  gate.Refuse();
  EXPECT_EQ(session.engine.Send(u"AT+CPBS=\"%s\"\r\n", {u"SM"}), E_OUTOFMEMORY);
}

TEST(AtEngine, WaitLineTakesALineThatIsThereWithoutWaiting) {
  ScriptedSession session;
  session.link.ReceiveChunk(u"one\r\ntwo\r\n");
  EXPECT_EQ(session.engine.WaitLine(session.engine.response(), 8000ms), S_OK);
  EXPECT_EQ(session.engine.response().text(), u"one");
  EXPECT_EQ(session.engine.WaitLine(session.engine.response(), 8000ms), S_OK);
  EXPECT_EQ(session.engine.response().text(), u"two");
  EXPECT_EQ(session.waiter.now(), 0ms);
}

TEST(AtEngine, WaitLineWaitsExactlyUntilTheLineArrives) {
  ScriptedSession session;
  session.phone.Say("OK\r", 7999ms);
  EXPECT_EQ(session.engine.WaitLine(session.engine.response(), 8000ms), S_OK);
  EXPECT_EQ(session.engine.response().text(), u"OK");
  EXPECT_EQ(session.waiter.now(), 7999ms);
}

TEST(AtEngine, WaitLineFailsExactlyAfterItsTimeout) {
  ScriptedSession session;
  session.phone.Say("OK\r", 8001ms);
  EXPECT_EQ(session.engine.WaitLine(session.engine.response(), 8000ms), E_FAIL);
  EXPECT_THAT(session.waiter.waits(), ElementsAre(Wait{8000ms, 8000ms, false}));
  EXPECT_EQ(session.engine.response().text(), u"");
}

TEST(AtEngine, TheTimeoutCountsFromTheLastMessageHandled) {
  ScriptedSession session;
  for (const auto when : {5000ms, 12000ms}) session.waiter.Post(when, [] {});
  EXPECT_EQ(session.engine.WaitLine(session.engine.response(), 8000ms), E_FAIL);
  EXPECT_EQ(session.waiter.now(), 20000ms);
}

TEST(AtEngine, WaitLineGivesALineWithoutTheLineFeedsOfACutLineEnd) {
  ScriptedSession session;
  for (const auto* chunk : {u"one\r", u"\n", u"\n+CPBR: 1,\"a\nb\"\r", u"\n\r"})
    session.link.ReceiveChunk(chunk);
  ResponseLine& line = session.engine.response();
  EXPECT_EQ(session.engine.WaitLine(line, 8000ms), S_OK);
  EXPECT_EQ(line.text(), u"one");
  EXPECT_EQ(session.engine.WaitLine(line, 8000ms), S_OK);
  EXPECT_EQ(line.text(), u"+CPBR: 1,\"a\nb\"");
  EXPECT_EQ(session.engine.WaitLine(line, 8000ms), S_OK);
  EXPECT_EQ(line.text(), u"");
}

TEST(AtEngine, HalfALineDoesNotEndTheWait) {
  ScriptedSession session;
  session.phone.Say("+CPBR: 1,\"1", 100ms);
  session.phone.Say("23\"\r\n", 300ms);
  EXPECT_EQ(session.engine.WaitLine(session.engine.response(), 8000ms), S_OK);
  EXPECT_EQ(session.engine.response().text(), u"+CPBR: 1,\"123\"");
  EXPECT_EQ(session.waiter.now(), 300ms);
}

TEST(AtEngine, ASignalWithoutALineMakesWaitLineWaitAgainWithTheWholeTimeout) {
  ScriptedSession session;
  session.waiter.Post(1000ms, [&] { session.link.line_event().Set(); });
  session.phone.Say("OK\r", 8500ms);
  EXPECT_EQ(session.engine.WaitLine(session.engine.response(), 8000ms), S_OK);
  EXPECT_THAT(session.waiter.waits(), ElementsAre(Wait{8000ms, 1000ms, true}, Wait{8000ms, 7500ms, true}));
}

TEST(AtEngine, ASignalWithoutALineThenSilenceFails) {
  ScriptedSession session;
  session.link.line_event().Set();
  EXPECT_EQ(session.engine.WaitLine(session.engine.response(), 8000ms), E_FAIL);
  EXPECT_THAT(session.waiter.waits(), ElementsAre(Wait{8000ms, 0ms, true}, Wait{8000ms, 8000ms, false}));
}

TEST(AtEngine, AnAnswerThatCameTooLateIsFlushedAndDoesNotStopTheNextTimeout) {
  ScriptedSession session;
  session.link.ReceiveChunk(u"too late\r");
  session.engine.FlushLines();
  EXPECT_EQ(session.engine.WaitLine(session.engine.response(), 8000ms), E_FAIL);
  EXPECT_EQ(session.waiter.now(), 8000ms);
}

TEST(AtEngine, WaitLineOnAClosedLinkFailsAtOnce) {
  ScriptedSession session;
  EXPECT_EQ(session.link.Close(), S_OK);
  EXPECT_EQ(session.engine.WaitLine(session.engine.response(), 8000ms), E_FAIL);
  EXPECT_THAT(session.waiter.waits(), IsEmpty());
}

TEST(AtEngine, CountsTheAnswersThatItMissed) {
  ScriptedSession session;
  session.link.ReceiveChunk(u"RING\rERROR\r");
  EXPECT_EQ(session.engine.WaitFinal(session.engine.response(), 8000ms), E_FAIL);
  EXPECT_EQ(session.engine.missed_answers(), 0);
  session.link.ReceiveChunk(u"+CPBR: 1,");
  EXPECT_EQ(session.engine.WaitFinal(session.engine.response(), 8000ms), E_FAIL);
  EXPECT_EQ(session.engine.missed_answers(), 1);
  EXPECT_EQ(session.link.Close(), S_OK);
  EXPECT_EQ(session.engine.WaitLine(session.engine.response(), 8000ms), E_FAIL);
  EXPECT_EQ(session.engine.missed_answers(), 2);
}

TEST(AtEngine, WaitFinalSkipsEverythingUpToOk) {
  ScriptedSession session;
  session.link.ReceiveChunk(u"\r\nRING\r\n+CMTI: \"SM\",3\r\nok\r\nOK\r\nafter\r\n");
  EXPECT_EQ(session.engine.WaitFinal(session.engine.response(), 3000ms), S_OK);
  EXPECT_EQ(session.engine.response().text(), u"OK");
  EXPECT_EQ(session.engine.WaitLine(session.engine.response(), 3000ms), S_OK);
  EXPECT_EQ(session.engine.response().text(), u"after");
}

TEST(AtEngine, WaitFinalFailsOnError) {
  ScriptedSession session;
  session.link.ReceiveChunk(u"\r\nERROR\r\nOK\r\n");
  EXPECT_EQ(session.engine.WaitFinal(session.engine.response(), 3000ms), E_FAIL);
  EXPECT_EQ(session.engine.response().text(), u"ERROR");
}

TEST(AtEngine, WaitFinalRestartsItsTimeoutWithEveryLine) {
  ScriptedSession session;
  for (int i = 1; i <= 10; ++i) session.phone.Say("line\r", i * 2900ms);
  EXPECT_EQ(session.engine.WaitFinal(session.engine.response(), 3000ms), E_FAIL);
  EXPECT_EQ(session.waiter.now(), 10 * 2900ms + 3000ms);
  EXPECT_EQ(session.engine.response().text(), u"line");
}

TEST(AtEngine, ExtendedErrorsAreNoFinalResultsAndTimeOut) {
  for (const std::u16string error : {u"+CME ERROR: 10", u"+CMS ERROR: 500"}) {
    ScriptedSession session;
    session.link.ReceiveChunk(error + u"\r");
    EXPECT_EQ(session.engine.WaitFinal(session.engine.response(), 8000ms), E_FAIL);
    EXPECT_EQ(session.waiter.now(), 8000ms);
    EXPECT_EQ(session.engine.response().text(), error);
  }
}

TEST(AtEngine, DetectPhoneSendsItsCommandPausesAndTakesOk) {
  ScriptedSession session(R"(
    > ATZE0V1\r
    < OK
  )");
  EXPECT_EQ(session.engine.DetectPhone(), S_OK);
  EXPECT_EQ(session.phone.sent(), "ATZE0V1\r");
  EXPECT_THAT(session.waiter.pauses(), ElementsAre(200ms));
  EXPECT_EQ(session.waiter.now(), 200ms);
}

TEST(AtEngine, DetectPhoneFlushesBeforeItSends) {
  ScriptedSession session(R"(
    > ATZE0V1\r
    < ERROR
  )");
  session.link.ReceiveChunk(u"OK\r\nOK\r\n");
  EXPECT_EQ(session.engine.DetectPhone(), E_FAIL);
  EXPECT_EQ(session.engine.response().text(), u"ERROR");
}

TEST(AtEngine, DetectPhoneSkipsEchoAndOtherLines) {
  ScriptedSession session(R"(
    > ATZE0V1\r
    << ATZE0V1\r
    < +CREG: 1
    = 5000
    < +CPIN: READY
    = 7900
    < OK
  )");
  EXPECT_EQ(session.engine.DetectPhone(), S_OK);
  EXPECT_EQ(session.waiter.now(), 12900ms);
}

TEST(AtEngine, DetectPhoneFailsOnASilentPhoneAfterPauseAndTimeout) {
  ScriptedSession session(R"(> ATZE0V1\r)");
  EXPECT_EQ(session.engine.DetectPhone(), E_FAIL);
  EXPECT_EQ(session.waiter.now(), 8200ms);
}

TEST(AtEngine, DetectPhoneFailsWhenThePhoneFallsSilentAfterSomeLines) {
  ScriptedSession session(R"(
    > ATZE0V1\r
    < one
    = 1000
    < two
  )");
  EXPECT_EQ(session.engine.DetectPhone(), E_FAIL);
  EXPECT_EQ(session.waiter.now(), 9000ms);
}

TEST(AtEngine, DropsTheLinesThatWaitAndKeepsTheResponse) {
  ScriptedSession session;
  session.link.ReceiveChunk(u"kept\r\nlate\r\nlater\r\nbegun");
  EXPECT_EQ(session.engine.WaitLine(session.engine.response(), 8000ms), S_OK);
  session.engine.DropWaitingLines();
  EXPECT_EQ(session.engine.response().text(), u"kept");
  EXPECT_FALSE(session.link.line_event().IsSet());
  session.link.ReceiveChunk(u" line\r\n");
  EXPECT_EQ(session.engine.WaitLine(session.engine.response(), 8000ms), S_OK);
  EXPECT_EQ(session.engine.response().text(), u"begun line");
}

// The answer to an earlier command that comes only now, right before that to the detection.
TEST(AtEngine, DetectPhoneLeavesNoAnswerForTheNextCommand) {
  ScriptedSession session(R"(
    > ATZE0V1\r
    < OK
    < OK
  )");
  EXPECT_EQ(session.engine.DetectPhone(), S_OK);
  EXPECT_EQ(session.engine.response().text(), u"OK");
  EXPECT_FALSE(session.link.line_event().IsSet());
  EXPECT_THAT(session.waiter.pauses(), ElementsAre(200ms)) << "no answer was missed";
}

TEST(AtEngine, DetectPhoneGivesAMissedAnswerASecondToCome) {
  ScriptedSession session(R"(
    > AT+CPBS=?\r\n
    > ATZE0V1\r
    < OK
    = 900
    < OK
    > ATZE0V1\r
    < OK
  )");
  EXPECT_EQ(session.engine.Send(u"AT+CPBS=?\r\n"), S_OK);
  EXPECT_EQ(session.engine.WaitFinal(session.engine.response(), 8000ms), E_FAIL);
  EXPECT_EQ(session.engine.DetectPhone(), S_OK);
  EXPECT_FALSE(session.link.line_event().IsSet());
  EXPECT_EQ(session.engine.DetectPhone(), S_OK);
  EXPECT_THAT(session.waiter.pauses(), ElementsAre(200ms, 1000ms, 200ms)) << "once for all that was missed";
}

// Which of two answers is the late one shows only when the second has come.
TEST(AtEngine, TheLastAnswerCountsWhereOneWasMissed) {
  struct Case {
    const char* late;
    const char* own;
    Status status;
  };
  for (const Case& one : {Case{"ERROR", "OK", S_OK}, Case{"OK", "ERROR", E_FAIL},
                          Case{"OK", "+CMS ERROR: 302", E_FAIL}, Case{"ERROR", "+CREG: 1", E_FAIL}}) {
    ScriptedSession session(std::string("> ATZE0V1\\r\n> ATZE0V1\\r\n< ") + one.late + "\n= 900\n< " +
                            one.own);
    EXPECT_EQ(session.engine.DetectPhone(), E_FAIL) << "silence";
    EXPECT_EQ(session.engine.DetectPhone(), one.status) << one.late << ", " << one.own;
    EXPECT_EQ(session.engine.response().text(), FromUtf8(one.own));
    EXPECT_FALSE(session.link.line_event().IsSet());
  }
}

TEST(AtEngine, TheFirstAnswerCountsWhereNoneWasMissed) {
  ScriptedSession session("> AT\\r\n< ERROR\n< OK\n");
  EXPECT_EQ(session.engine.Send(u"AT\r"), S_OK);
  EXPECT_EQ(session.engine.WaitFinal(session.engine.response(), 8000ms), E_FAIL);
  EXPECT_EQ(session.engine.response().text(), u"ERROR");
  EXPECT_EQ(session.waiter.now(), 0ms);
}

TEST(AtEngine, DetectPhoneThatFailsStillExpectsTheMissedAnswer) {
  ScriptedSession session(R"(
    > ATZE0V1\r
    > ATZE0V1\r
    < OK
    = 900
    < OK
  )");
  EXPECT_EQ(session.engine.DetectPhone(), E_FAIL);
  EXPECT_EQ(session.engine.DetectPhone(), S_OK);
  EXPECT_FALSE(session.link.line_event().IsSet());
  EXPECT_THAT(session.waiter.pauses(), ElementsAre(200ms, 200ms, 1000ms));
}

TEST(AtEngine, DetectPhoneGivesBackTheStatusOfAFailedSend) {
  ScriptedSession session;
  session.ports.line.write_status = E_FAIL;
  EXPECT_EQ(session.engine.DetectPhone(), E_FAIL);
  EXPECT_THAT(session.waiter.pauses(), IsEmpty());
  EXPECT_THAT(session.waiter.waits(), IsEmpty());
}

TEST(AtEngine, DetectPhoneWorksWithEveryChunkSize) {
  for (std::size_t size = 1; size <= 8; ++size) {
    ScriptedSession session(R"(
      > ATZE0V1\r
      << OK\r\n
    )");
    session.phone.set_chunk_size(size);
    EXPECT_EQ(session.engine.DetectPhone(), S_OK) << size;
  }
}

// A procedure as the services write them, over the engine alone.
Status ReadRange(AtEngine& engine, int& first, int& last) {
  engine.FlushLines();
  if (const Status status = engine.Send(u"AT+CPBR=?\r\n"); Failed(status)) return status;
  while (true) {
    const Status status = engine.WaitLine(engine.response(), timing::kReply);
    if (Failed(status)) return status;
    if (StartsWith(engine.response(), u"+CPBR:")) {
      first = ParseDecimal(RangeBound(Field(engine.response(), 0), false));
      last = ParseDecimal(RangeBound(Field(engine.response(), 0), true));
    }
    if (IsOk(engine.response())) return S_OK;
    if (IsError(engine.response())) return E_FAIL;
  }
}

/// The lines that are not empty, as the engine gives them, of a reply that the reads cut at these places.
std::vector<std::u16string> LinesOfCutReply(std::u16string_view reply, std::size_t first,
                                            std::size_t second) {
  ScriptedSession session;
  for (const auto chunk : {reply.substr(0, first), reply.substr(first, second - first), reply.substr(second)})
    session.link.ReceiveChunk(chunk);
  std::vector<std::u16string> lines;
  ResponseLine& line = session.engine.response();
  while (!IsOk(line) && !Failed(session.engine.WaitLine(line, 8000ms)))
    if (!line.text().empty()) lines.emplace_back(line.text());
  return lines;
}

TEST(AtEngine, EverySplitOfAReplyGivesTheSameLines) {
  for (const std::u16string_view reply :
       {u"\r\n+CPBR: 1,\"123\",129,\"Ann\"\r\n+CPBR: 2,\"4\",129,\"Bob\"\r\n\r\nOK\r\n",
        u"AT+CMGL=4\r\r\n+CMGL: 1,1,,25\r\n0791\r\n\r\n+CMGL: 2,1,,5\r\n0792\r\n\r\nOK\r\n"}) {
    const auto whole = LinesOfCutReply(reply, reply.size(), reply.size());
    ASSERT_THAT(whole, testing::SizeIs(testing::Ge(3U)));
    ASSERT_EQ(whole.back(), u"OK");
    for (std::size_t first = 0; first <= reply.size(); ++first) {
      for (std::size_t second = first; second <= reply.size(); ++second)
        ASSERT_EQ(LinesOfCutReply(reply, first, second), whole) << "cut at " << first << " and " << second;
    }
  }
}

TEST(AtEngine, AProcedureReadsItsInformationLine) {
  ScriptedSession session(R"(
    > AT+CPBR=?\r\n
    < +CPBR: (1-250),24,20
    < OK
  )");
  int first = 0;
  int last = 0;
  EXPECT_EQ(ReadRange(session.engine, first, last), S_OK);
  EXPECT_EQ(first, 1);
  EXPECT_EQ(last, 250);
}

TEST(AtEngine, OkBeforeTheInformationLineEndsAProcedureWithoutData) {
  ScriptedSession session(R"(
    > AT+CPBR=?\r\n
    < OK
    = 10
    < +CPBR: (1-250),24,20
  )");
  int first = 0;
  int last = 0;
  EXPECT_EQ(ReadRange(session.engine, first, last), S_OK);
  EXPECT_EQ(last, 0);
}

TEST(AtEngine, TheTimingsAreThoseOfTheProcedures) {
  EXPECT_EQ(timing::kReply, 8000ms);
  EXPECT_EQ(timing::kPhonebookRead, 25000ms);
  EXPECT_EQ(timing::kDelete, 3000ms);
  EXPECT_EQ(timing::kSubmit, 9000ms);
  EXPECT_EQ(timing::kAfterDetect, 200ms);
  EXPECT_EQ(timing::kLateAnswer, 1000ms);
  EXPECT_EQ(timing::kBeforeQuery, 500ms);
  EXPECT_EQ(timing::kBeforeSend, 400ms);
  EXPECT_EQ(timing::kBeforePdu, 800ms);
}

}  // namespace
}  // namespace celldesk
