#include "link/phone_link.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <chrono>
#include <cstdint>
#include <memory>
#include <sstream>
#include <string>
#include <vector>

#include "link/port_settings.h"
#include "support/fake_registry.h"
#include "support/fake_serial_port.h"
#include "support/fake_thread.h"
#include "support/manual_waiter.h"

namespace celldesk {
namespace {

using namespace std::chrono_literals;
using testing::ElementsAre;
using testing::IsEmpty;

class PhoneLinkTest : public testing::Test {
 protected:
  PhoneLinkTest() { link.set_port_name(u"COM1:"); }

  std::u16string TakeText() {
    ResponseLine line;
    EXPECT_EQ(link.TakeLine(line), S_OK);
    return std::u16string(line.text());
  }

  FakeRegistry registry;
  FakePortOpener ports;
  FakeThreadStarter threads;
  ManualWaiter waiter;
  PhoneLink link{ports, threads, registry, waiter};
};

TEST_F(PhoneLinkTest, StartsClosedAndEmpty) {
  PhoneLink fresh(ports, threads, registry, waiter);
  EXPECT_FALSE(fresh.IsOpen());
  EXPECT_EQ(fresh.port(), nullptr);
  EXPECT_EQ(fresh.port_name(), u"");
  EXPECT_EQ(fresh.response().text(), u"");
  EXPECT_EQ(fresh.completed_chunks(), 0U);
  EXPECT_FALSE(fresh.line_event().IsSet());
  EXPECT_EQ(fresh.open_problem(), OpenProblem::kNone);
}

TEST_F(PhoneLinkTest, OpenOpensTheNamedPortAndStartsOneReader) {
  EXPECT_EQ(link.Open(), S_OK);
  EXPECT_TRUE(link.IsOpen());
  EXPECT_NE(link.port(), nullptr);
  EXPECT_THAT(ports.line.opened, ElementsAre(u"COM1:"));
  EXPECT_EQ(threads.started, 1);
}

TEST_F(PhoneLinkTest, OpenGoesThroughItsStepsInOrder) {
  EXPECT_EQ(link.Open(), S_OK);
  EXPECT_THAT(ports.line.calls,
              ElementsAre("open", "parameters", "set parameters", "set read interval", "capabilities"));
  EXPECT_THAT(ports.line.intervals, ElementsAre(50ms));
}

TEST_F(PhoneLinkTest, OpenAppliesTheStoredParametersOfItsPort) {
  LineParameters stored;
  stored.baud_rate = 115200;
  ASSERT_EQ(StoreLineParameters(registry, u"COM1:", stored), S_OK);
  ASSERT_EQ(StoreLineParameters(registry, u"COM2:", LineParameters{}), S_OK);
  EXPECT_EQ(link.Open(), S_OK);
  EXPECT_THAT(ports.line.applied, ElementsAre(stored));
  EXPECT_THAT(ports.line.calls, ElementsAre("open", "set parameters", "set read interval", "capabilities"));
}

TEST_F(PhoneLinkTest, OpenStoresThePresentParametersWhenNoneAreStored) {
  LineParameters present;
  present.baud_rate = 57600;
  ports.line.parameters = present;
  EXPECT_EQ(link.Open(), S_OK);
  EXPECT_EQ(LoadLineParameters(registry, u"COM1:"), present);
  EXPECT_THAT(ports.line.applied, ElementsAre(present));
}

TEST_F(PhoneLinkTest, TheNextOpenFindsTheParametersThatTheFirstStored) {
  EXPECT_EQ(link.Open(), S_OK);
  EXPECT_EQ(link.Close(), S_OK);
  ports.line.parameters->baud_rate = 2400;
  EXPECT_EQ(link.Open(), S_OK);
  EXPECT_THAT(ports.line.applied, ElementsAre(LineParameters{}, LineParameters{}));
}

TEST_F(PhoneLinkTest, AStoredValueThatIsNoWholeBlockCountsAsNone) {
  const std::vector<std::uint8_t> short_block(27);
  registry.PutBinary(u"COM1:", short_block);
  EXPECT_EQ(link.Open(), S_OK);
  EXPECT_THAT(ports.line.applied, ElementsAre(LineParameters{}));
  EXPECT_EQ(LoadLineParameters(registry, u"COM1:"), LineParameters{});
}

TEST_F(PhoneLinkTest, OpenWithoutParametersOfAnyKindAppliesNone) {
  ports.line.parameters.reset();
  EXPECT_EQ(link.Open(), S_OK);
  EXPECT_THAT(ports.line.applied, IsEmpty());
  EXPECT_EQ(LoadLineParameters(registry, u"COM1:"), std::nullopt);
}

TEST_F(PhoneLinkTest, FailuresToStoreAndToApplyParametersAreIgnored) {
  registry.FailAllWrites();
  ports.line.set_parameters_status = E_FAIL;
  EXPECT_EQ(link.Open(), S_OK);
  EXPECT_THAT(ports.line.applied, ElementsAre(LineParameters{}));
}

TEST_F(PhoneLinkTest, APortThatDoesNotOpenLeavesTheLinkClosed) {
  ports.line.open_problem = OpenProblem::kNoSuchPort;
  EXPECT_EQ(link.Open(), E_FAIL);
  EXPECT_FALSE(link.IsOpen());
  EXPECT_EQ(link.port(), nullptr);
  EXPECT_EQ(link.open_problem(), OpenProblem::kNoSuchPort);
  EXPECT_EQ(threads.started, 0);
  EXPECT_EQ(registry.write_count(), 0);
}

TEST_F(PhoneLinkTest, OpenAfterAFailureWorksAndForgetsTheProblem) {
  ports.line.open_problem = OpenProblem::kInUse;
  EXPECT_EQ(link.Open(), E_FAIL);
  ports.line.open_problem = OpenProblem::kNone;
  EXPECT_EQ(link.Open(), S_OK);
  EXPECT_EQ(link.open_problem(), OpenProblem::kNone);
}

TEST_F(PhoneLinkTest, WithoutAThreadOpenFailsButThePortStaysOpen) {
  threads.refuse = true;
  EXPECT_EQ(link.Open(), E_FAIL);
  EXPECT_TRUE(link.IsOpen());
  EXPECT_EQ(ports.line.open_ports, 1);
  EXPECT_EQ(ports.line.calls.back(), "capabilities");
  EXPECT_EQ(link.Close(), S_OK);
  EXPECT_EQ(ports.line.open_ports, 0);
  EXPECT_THAT(threads.priorities, IsEmpty());
}

TEST_F(PhoneLinkTest, OpenWhileOpenFailsAndChangesNothing) {
  ASSERT_EQ(link.Open(), S_OK);
  SerialPort* const port = link.port();
  EXPECT_EQ(link.Open(), E_FAIL);
  EXPECT_EQ(link.port(), port);
  EXPECT_EQ(threads.started, 1);
}

TEST_F(PhoneLinkTest, AProviderWithCapabilitiesRaisesTheReader) {
  ports.line.capabilities = 0x80;
  EXPECT_EQ(link.Open(), S_OK);
  EXPECT_THAT(threads.priorities, ElementsAre(ThreadPriority::kAboveNormal));
}

TEST_F(PhoneLinkTest, AProviderWithoutCapabilitiesLowersTheReader) {
  ports.line.capabilities = 0;
  EXPECT_EQ(link.Open(), S_OK);
  EXPECT_THAT(threads.priorities, ElementsAre(ThreadPriority::kBelowNormal));
}

TEST_F(PhoneLinkTest, AnUnknownProviderLeavesTheReadersPriority) {
  ports.line.capabilities.reset();
  EXPECT_EQ(link.Open(), S_OK);
  EXPECT_THAT(threads.priorities, IsEmpty());
}

TEST_F(PhoneLinkTest, CloseStopsTheReaderAndClosesThePort) {
  ASSERT_EQ(link.Open(), S_OK);
  ports.line.calls.clear();
  threads.priorities.clear();
  EXPECT_EQ(link.Close(), S_OK);
  EXPECT_FALSE(link.IsOpen());
  EXPECT_EQ(link.port(), nullptr);
  EXPECT_THAT(threads.priorities, ElementsAre(ThreadPriority::kNormal));
  EXPECT_THAT(ports.line.calls, ElementsAre("purge", "purge", "close"));
  EXPECT_THAT(waiter.pauses(), ElementsAre(200ms));
  EXPECT_THAT(waiter.wait_cursor(), ElementsAre(true, false));
  EXPECT_THAT(threads.bodies, IsEmpty());
}

TEST_F(PhoneLinkTest, CloseShowsTheWaitCursorWhileItPausesAndHasPurgedBefore) {
  ASSERT_EQ(link.Open(), S_OK);
  ports.line.calls.clear();
  std::vector<bool> cursor;
  std::vector<std::string> calls;
  waiter.Post(waiter.now() + 100ms, [&] {
    cursor = waiter.wait_cursor();
    calls = ports.line.calls;
  });
  EXPECT_EQ(link.Close(), S_OK);
  EXPECT_THAT(cursor, ElementsAre(true));
  EXPECT_THAT(calls, ElementsAre("purge"));
}

TEST_F(PhoneLinkTest, CloseOfAClosedLinkDoesNothing) {
  EXPECT_EQ(link.Close(), S_OK);
  EXPECT_THAT(waiter.pauses(), IsEmpty());
  EXPECT_THAT(waiter.wait_cursor(), IsEmpty());
}

TEST_F(PhoneLinkTest, CloseLeavesTheLineQueueAsItStands) {
  ASSERT_EQ(link.Open(), S_OK);
  link.ReceiveChunk(u"one\r\ntwo\r\nthr");
  EXPECT_EQ(link.Close(), S_OK);
  EXPECT_FALSE(link.line_event().IsSet());
  EXPECT_EQ(TakeText(), u"one");
  EXPECT_EQ(TakeText(), u"two");
  ResponseLine line;
  EXPECT_EQ(link.TakeLine(line), E_FAIL);
}

TEST_F(PhoneLinkTest, OldLinesAreNotAnnouncedAfterTheNextOpen) {
  ASSERT_EQ(link.Open(), S_OK);
  link.ReceiveChunk(u"old\r");
  EXPECT_EQ(link.Close(), S_OK);
  EXPECT_EQ(link.Open(), S_OK);
  EXPECT_FALSE(link.line_event().IsSet());
  EXPECT_EQ(link.completed_chunks(), 0U);
  link.ReceiveChunk(u"new\r");
  EXPECT_TRUE(link.line_event().IsSet());
  EXPECT_EQ(link.completed_chunks(), 1U);
  EXPECT_EQ(TakeText(), u"old");
  EXPECT_EQ(TakeText(), u"new");
}

TEST_F(PhoneLinkTest, AReaderThatDoesNotEndIsWaitedForOneSecondAndKeepsThePort) {
  ASSERT_EQ(link.Open(), S_OK);
  threads.stuck = true;
  EXPECT_EQ(link.Close(), S_OK);
  EXPECT_FALSE(link.IsOpen());
  EXPECT_EQ(link.port(), nullptr);
  std::chrono::milliseconds waited{};
  for (const auto join : threads.joins) waited += join;
  EXPECT_EQ(waited, 1000ms);
  EXPECT_EQ(ports.line.open_ports, 1);
}

TEST_F(PhoneLinkTest, AfterAnAbandonedReaderTheNextOpenStartsAfresh) {
  ASSERT_EQ(link.Open(), S_OK);
  threads.stuck = true;
  EXPECT_EQ(link.Close(), S_OK);
  threads.stuck = false;
  EXPECT_EQ(link.Open(), S_OK);
  EXPECT_EQ(threads.started, 2);
  EXPECT_EQ(ports.line.open_ports, 2);
  threads.bodies.clear();  // the old reader ends, and with it its port
  EXPECT_EQ(ports.line.open_ports, 1);
  EXPECT_TRUE(link.IsOpen());
  EXPECT_EQ(link.Close(), S_OK);
  EXPECT_EQ(ports.line.open_ports, 0);
}

TEST_F(PhoneLinkTest, DestructionClosesAnOpenLink) {
  {
    PhoneLink other(ports, threads, registry, waiter);
    other.set_port_name(u"COM2:");
    ASSERT_EQ(other.Open(), S_OK);
    other.ReceiveChunk(u"left behind\r");
  }
  EXPECT_EQ(ports.line.open_ports, 0);
  EXPECT_THAT(waiter.pauses(), ElementsAre(200ms));
}

TEST_F(PhoneLinkTest, FlushLinesEmptiesTheQueueAndTheResponse) {
  ASSERT_EQ(link.Open(), S_OK);
  link.ReceiveChunk(u"one\r\ntwo\r\nthr");
  ASSERT_EQ(link.TakeLine(link.response()), S_OK);
  link.FlushLines();
  EXPECT_EQ(link.response().text(), u"");
  EXPECT_FALSE(link.line_event().IsSet());
  EXPECT_EQ(link.TakeLine(link.response()), E_FAIL);
  link.ReceiveChunk(u"ee\r");
  EXPECT_EQ(TakeText(), u"ee");
}

TEST_F(PhoneLinkTest, TakeLineReplacesTheTextAndSetsTheCursorToItsStart) {
  link.ReceiveChunk(u"OK 1\r\nOK 2\r\n");
  ResponseLine line;
  ASSERT_EQ(link.TakeLine(line), S_OK);
  ASSERT_TRUE(IsOk(line));
  ASSERT_EQ(link.TakeLine(line), S_OK);
  EXPECT_EQ(line.rest(), u"OK 2");
}

TEST_F(PhoneLinkTest, TakeLineWithoutALineLeavesTheResponse) {
  link.ReceiveChunk(u"the last word\r");
  ASSERT_EQ(link.TakeLine(link.response()), S_OK);
  EXPECT_EQ(link.TakeLine(link.response()), E_FAIL);
  EXPECT_EQ(link.response().text(), u"the last word");
}

TEST_F(PhoneLinkTest, WriteHandsTheBytesToThePort) {
  std::vector<std::uint8_t> written;
  ports.line.on_write = [&](std::span<const std::uint8_t> bytes) {
    written.assign(bytes.begin(), bytes.end());
  };
  ASSERT_EQ(link.Open(), S_OK);
  const std::vector<std::uint8_t> bytes{0x41, 0x00, 0x1A, 0xFF};
  EXPECT_EQ(link.Write(bytes), S_OK);
  EXPECT_EQ(written, bytes);
}

TEST_F(PhoneLinkTest, AWriteFailsOnAClosedLinkAndWhenThePortFails) {
  const std::vector<std::uint8_t> bytes{0x41};
  EXPECT_EQ(link.Write(bytes), E_FAIL);
  ASSERT_EQ(link.Open(), S_OK);
  ports.line.write_status = StatusFromSystemError(5);
  EXPECT_EQ(link.Write(bytes), E_FAIL);
}

TEST_F(PhoneLinkTest, TheTraceShowsOpeningWritingAndClosing) {
  auto output = std::make_unique<std::ostringstream>();
  const std::ostringstream& text = *output;
  link.set_trace(
      std::make_shared<LineTrace>(std::move(output), [] { return LineTrace::Clock::result_type{}; }));
  ports.line.open_problem = OpenProblem::kInUse;
  EXPECT_EQ(link.Open(), E_FAIL);
  ports.line.open_problem = OpenProblem::kNone;
  EXPECT_EQ(link.Open(), S_OK);
  EXPECT_EQ(link.Write(std::vector<std::uint8_t>{'A', 'T', 13}), S_OK);
  EXPECT_EQ(link.Close(), S_OK);
  EXPECT_EQ(text.str(),
            "1970-01-01 00:00:00.000 cannot open COM1:\n"
            "1970-01-01 00:00:00.000 open COM1:\n"
            "1970-01-01 00:00:00.000 > AT\\r\n"
            "1970-01-01 00:00:00.000 close COM1:\n");
}

}  // namespace
}  // namespace celldesk
