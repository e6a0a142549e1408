// The link with a real reader thread on a port whose reads block.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <chrono>
#include <memory>
#include <sstream>
#include <string>
#include <thread>

#include "link/phone_link.h"
#include "support/blocking_port.h"
#include "support/fake_registry.h"
#include "support/fake_thread.h"
#include "support/manual_waiter.h"
#include "util/text.h"

namespace celldesk {
namespace {

using namespace std::chrono_literals;

class PhoneLinkReaderTest : public testing::Test {
 protected:
  PhoneLinkReaderTest() { link.set_port_name(u"COM1:"); }

  /// The next line; fails the test when it does not come.
  std::u16string NextLine() {
    ResponseLine line;
    EXPECT_TRUE(link.line_event().Wait(BlockingLine::kDeadline));
    EXPECT_EQ(link.TakeLine(line), S_OK);
    return std::u16string(line.text());
  }

  FakeRegistry registry;
  BlockingPortOpener ports;
  StdThreadStarter threads;
  ManualWaiter waiter;
  PhoneLink link{ports, threads, registry, waiter};
};

TEST_F(PhoneLinkReaderTest, ReceivedBytesBecomeLines) {
  ASSERT_EQ(link.Open(), S_OK);
  ports.line->Arrive("\r\nOK\r\n");
  EXPECT_EQ(NextLine(), u"");
  EXPECT_EQ(NextLine(), u"OK");
}

TEST_F(PhoneLinkReaderTest, ReceivedBytesGoThroughTheGsmAlphabet) {
  ASSERT_EQ(link.Open(), S_OK);
  ports.line->Arrive(std::string("\x00\x02\x1B\x5B\x80\xFF\r", 7));
  EXPECT_EQ(NextLine(), u"@$\u00B9\u00C4\uFF80\uFFFF");
}

TEST_F(PhoneLinkReaderTest, ALineSplitBetweenTwoReadsIsAnnouncedOnce) {
  ASSERT_EQ(link.Open(), S_OK);
  ports.line->Arrive("+CPBR: 1,\"1");
  ASSERT_TRUE(ports.line->WaitUntilBlocked());
  EXPECT_FALSE(link.line_event().IsSet());
  ports.line->Arrive("23\"\r\n");
  EXPECT_EQ(NextLine(), u"+CPBR: 1,\"123\"");
  EXPECT_EQ(link.completed_chunks(), 1U);
}

TEST_F(PhoneLinkReaderTest, ReadsOfOneByteLoseNone) {
  ASSERT_EQ(link.Open(), S_OK);
  for (const char byte : std::string("OK\r")) {
    ports.line->Arrive(std::string(1, byte));
    ASSERT_TRUE(ports.line->WaitUntilBlocked());
  }
  EXPECT_EQ(NextLine(), u"OK");
}

TEST_F(PhoneLinkReaderTest, ALongListingIsReadInFullBuffers) {
  ASSERT_EQ(link.Open(), S_OK);
  const std::string body(255, 'x');
  std::string listing;
  for (int i = 0; i < 8; ++i) listing += body + "\r";
  ports.line->Arrive(listing);
  for (int i = 0; i < 8; ++i) EXPECT_EQ(NextLine().size(), 255U);
  ASSERT_TRUE(ports.line->WaitUntilBlocked());
  EXPECT_EQ(link.completed_chunks(), 8U);
  EXPECT_EQ(ports.line->read_size(), 256U);
  EXPECT_EQ(ports.line->errors_cleared(), 1) << "a full buffer is followed by another read at once";
}

TEST_F(PhoneLinkReaderTest, ErrorsAreClearedBeforeEveryReadThatDoesNotFollowAFullBuffer) {
  ASSERT_EQ(link.Open(), S_OK);
  for (int i = 1; i <= 3; ++i) {
    ASSERT_TRUE(ports.line->WaitUntilBlocked());
    EXPECT_EQ(ports.line->errors_cleared(), i);
    ports.line->Arrive("OK\r");
  }
}

TEST_F(PhoneLinkReaderTest, FailingReadsAreTriedAgain) {
  ASSERT_EQ(link.Open(), S_OK);
  ports.line->FailReads(100);
  ASSERT_TRUE(ports.line->WaitUntilReadsFailed());
  EXPECT_GE(ports.line->errors_cleared(), 100) << "before each of them";
  ports.line->Arrive("OK\r");
  EXPECT_EQ(NextLine(), u"OK");
}

TEST_F(PhoneLinkReaderTest, CloseEndsABlockedRead) {
  for (int i = 0; i < 1000; ++i) {
    ASSERT_EQ(link.Open(), S_OK);
    ASSERT_TRUE(ports.line->WaitUntilBlocked());
    ASSERT_EQ(link.Close(), S_OK);
    ASSERT_EQ(threads.running(), 0);
    ASSERT_TRUE(ports.line->closed());
  }
  EXPECT_EQ(waiter.now(), 200s);
}

TEST_F(PhoneLinkReaderTest, CloseRightAfterOpenLeavesNoThread) {
  for (int i = 0; i < 200; ++i) {
    ASSERT_EQ(link.Open(), S_OK);
    ASSERT_EQ(link.Close(), S_OK);
    ASSERT_EQ(threads.running(), 0);
    ASSERT_TRUE(ports.line->closed());
  }
}

TEST_F(PhoneLinkReaderTest, CloseEndsAReaderThatIsFlooded) {
  ASSERT_EQ(link.Open(), S_OK);
  const std::string full_buffer = std::string(255, 'x') + "\r";
  ports.line->Flood(full_buffer);
  EXPECT_EQ(NextLine().size(), 255U);
  EXPECT_EQ(link.Close(), S_OK);
  EXPECT_EQ(threads.running(), 0);
}

TEST_F(PhoneLinkReaderTest, LinesOfASessionArriveInOrderWhileTheyAreTaken) {
  ASSERT_EQ(link.Open(), S_OK);
  constexpr int kLines = 2000;
  std::thread phone([this] {
    for (int i = 0; i < kLines; ++i) ports.line->Arrive("+CPBR: " + std::to_string(i) + "\r");
  });
  for (int i = 0; i < kLines; ++i) ASSERT_EQ(NextLine(), WidenAscii("+CPBR: " + std::to_string(i)));
  phone.join();
  EXPECT_FALSE(link.line_event().IsSet());
}

TEST_F(PhoneLinkReaderTest, FlushingWhileLinesArriveLosesNoSignal) {
  ASSERT_EQ(link.Open(), S_OK);
  std::thread phone([this] {
    for (int i = 0; i < 2000; ++i) ports.line->Arrive("noise\r");
  });
  for (int i = 0; i < 2000; ++i) link.FlushLines();
  phone.join();
  ports.line->Arrive("last\r");
  while (NextLine() != u"last") {
  }
  EXPECT_FALSE(link.line_event().IsSet());
}

TEST_F(PhoneLinkReaderTest, AnAbandonedReaderTouchesNothingOfTheLink) {
  {
    auto short_lived = std::make_unique<PhoneLink>(ports, threads, registry, waiter);
    short_lived->set_port_name(u"COM1:");
    ASSERT_EQ(short_lived->Open(), S_OK);
    ASSERT_TRUE(ports.line->WaitUntilBlocked());
    ports.line->Stick();
    EXPECT_EQ(short_lived->Close(), S_OK);
    EXPECT_EQ(threads.running(), 1);
  }
  ports.line->Arrive("too late\r");
  ports.line->LetGo();
  EXPECT_TRUE(ports.line->WaitUntilClosed());
}

TEST_F(PhoneLinkReaderTest, TheLinkReopensBesideAnAbandonedReader) {
  ASSERT_EQ(link.Open(), S_OK);
  ASSERT_TRUE(ports.line->WaitUntilBlocked());
  const auto old_line = ports.line;
  old_line->Stick();
  EXPECT_EQ(link.Close(), S_OK);

  ports.line = std::make_shared<BlockingLine>();
  ASSERT_EQ(link.Open(), S_OK);
  old_line->Arrive("for the old reader\r");
  ASSERT_TRUE(old_line->WaitUntilClosed());
  ports.line->Arrive("OK\r");
  EXPECT_EQ(NextLine(), u"OK");
}

TEST_F(PhoneLinkReaderTest, TheTraceShowsWhatWasRead) {
  auto output = std::make_unique<std::ostringstream>();
  const std::ostringstream& text = *output;
  link.set_trace(
      std::make_shared<LineTrace>(std::move(output), [] { return LineTrace::Clock::result_type{}; }));
  ASSERT_EQ(link.Open(), S_OK);
  ports.line->Arrive("\r\nOK\r\n");
  EXPECT_EQ(NextLine(), u"");
  EXPECT_EQ(link.Close(), S_OK);
  EXPECT_THAT(text.str(), testing::HasSubstr("1970-01-01 00:00:00.000 < \\r\\nOK\\r\\n\n"));
}

}  // namespace
}  // namespace celldesk
