#include "support/scripted_session.h"

#include <gmock/gmock.h>
#include <gtest/gtest-spi.h>
#include <gtest/gtest.h>

namespace celldesk {
namespace {

using namespace std::chrono_literals;
using testing::ElementsAre;

std::vector<std::uint8_t> Bytes(std::string_view text) { return {text.begin(), text.end()}; }

TEST(ManualWaiter, MovesItsClockOnlyByWaitsAndPauses) {
  ManualWaiter waiter;
  Event event;
  EXPECT_FALSE(waiter.WaitFor(event, 300ms));
  waiter.Pause(50ms);
  event.Set();
  EXPECT_TRUE(waiter.WaitFor(event, 300ms));
  EXPECT_EQ(waiter.now(), 350ms);
  EXPECT_THAT(waiter.pauses(), ElementsAre(50ms));
  EXPECT_THAT(waiter.waits(),
              ElementsAre(ManualWaiter::Wait{300ms, 300ms, false}, ManualWaiter::Wait{300ms, 0ms, true}));
}

TEST(ManualWaiter, HandlesMessagesInOrderOfTheirTimes) {
  ManualWaiter waiter;
  std::vector<std::chrono::milliseconds> times;
  for (const auto when : {30ms, 10ms, 20ms}) waiter.Post(when, [&] { times.push_back(waiter.now()); });
  waiter.Pause(25ms);
  EXPECT_THAT(times, ElementsAre(10ms, 20ms));
  waiter.Pause(25ms);
  EXPECT_THAT(times, ElementsAre(10ms, 20ms, 30ms));
  EXPECT_EQ(waiter.now(), 50ms);
}

TEST(ManualWaiter, AMessageMayEndTheWait) {
  ManualWaiter waiter;
  Event event;
  waiter.Post(70ms, [&] { event.Set(); });
  EXPECT_TRUE(waiter.WaitFor(event, 100ms));
  EXPECT_EQ(waiter.now(), 70ms);
}

struct PhoneOnPaper {
  explicit PhoneOnPaper(std::string_view script = {}) {
    phone.DeliverTo(
        [this](std::span<const std::uint8_t> bytes) { received.emplace_back(bytes.begin(), bytes.end()); });
    phone.Load(script);
  }
  ManualWaiter waiter;
  ScriptedPhone phone{waiter};
  std::vector<std::string> received;
};

TEST(ScriptedPhone, AnswersAWriteWithItsLines) {
  PhoneOnPaper paper(R"(
    # the SIM's book
    > AT+CPBS="SM"\r\n
    < OK
  )");
  paper.phone.Receive(Bytes("AT+CPBS=\"SM\"\r\n"));
  EXPECT_TRUE(paper.received.empty());
  paper.waiter.Pause(0ms);
  EXPECT_THAT(paper.received, ElementsAre("\r\nOK\r\n"));
  EXPECT_TRUE(paper.phone.finished());
}

TEST(ScriptedPhone, DelaysCountFromTheBurstBefore) {
  PhoneOnPaper paper(R"(
    > A\r
    = 100
    << one
    = 50
    << two
  )");
  paper.phone.Receive(Bytes("A\r"));
  paper.waiter.Pause(99ms);
  EXPECT_TRUE(paper.received.empty());
  paper.waiter.Pause(1ms);
  EXPECT_THAT(paper.received, ElementsAre("one"));
  paper.waiter.Pause(50ms);
  EXPECT_THAT(paper.received, ElementsAre("one", "two"));
}

TEST(ScriptedPhone, CutsAnAnswerIntoChunks) {
  PhoneOnPaper paper;
  paper.phone.set_chunk_size(3);
  paper.phone.Say("12345678");
  paper.waiter.Pause(0ms);
  EXPECT_THAT(paper.received, ElementsAre("123", "456", "78"));
}

TEST(ScriptedPhone, AnswersBeyondTheScriptWhenAsked) {
  PhoneOnPaper paper;
  paper.phone.Otherwise([](const std::string& command) { return command + "OK\r"; });
  paper.phone.Receive(Bytes("AT\r"));
  paper.waiter.Pause(0ms);
  EXPECT_THAT(paper.received, ElementsAre("AT\rOK\r"));
  EXPECT_EQ(paper.phone.sent(), "AT\r");
}

TEST(ScriptedPhone, AWriteThatDiffersFailsTheTest) {
  EXPECT_NONFATAL_FAILURE(
      {
        PhoneOnPaper paper("> AT\\r\n");
        paper.phone.Receive(Bytes("AT\n"));
      },
      "differs from the script");
}

TEST(ScriptedPhone, AWriteBeyondTheScriptFailsTheTest) {
  EXPECT_NONFATAL_FAILURE(PhoneOnPaper().phone.Receive(Bytes("AT\r")), "beyond the script");
}

TEST(ScriptedPhone, ALineThatIsNoScriptFailsTheTest) {
  EXPECT_NONFATAL_FAILURE(PhoneOnPaper("> A\nhello\n"), "not a script line: hello");
  EXPECT_NONFATAL_FAILURE(PhoneOnPaper("< answer to nothing\n"), "not a script line");
}

TEST(ScriptedSession, AScriptThatIsNotUsedUpFailsTheTest) {
  EXPECT_NONFATAL_FAILURE(ScriptedSession session("> AT\\r\n"), "the script was not used up");
}

TEST(Unescape, TurnsEscapesIntoBytes) {
  EXPECT_EQ(Unescape(R"(a\r\n\\\x1Ab\xFF)"),
            "a\r\n\\\x1A"
            "b\xFF");
  EXPECT_EQ(Unescape("plain \"text\""), "plain \"text\"");
}

}  // namespace
}  // namespace celldesk
