// The link on real pseudo-terminals, with real threads.

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <termios.h>
#include <algorithm>

#include <chrono>
#include <ctime>
#include <filesystem>
#include <thread>

#include "link/at_engine.h"
#include "link/line_rule.h"
#include "link/phone_link.h"
#include "link/port_settings.h"
#include "link/posix/line_spy.h"
#include "platform/posix/posix_serial_port.h"
#include "platform/posix/posix_thread.h"
#include "support/fake_registry.h"
#include "support/pseudo_terminal.h"

namespace celldesk {
namespace {

using namespace std::chrono_literals;
using std::chrono::milliseconds;
using std::chrono::steady_clock;

class NoPorts : public PortList {
 public:
  std::vector<PortInfo> ActivePorts() override { return {}; }
};

/// Waits on the real event; pauses really only when told to.
class RealWaiter : public Waiter {
 public:
  bool WaitFor(Event& event, milliseconds timeout) override { return event.Wait(timeout); }
  void Pause(milliseconds duration) override {
    if (pauses) (void)never_.Wait(duration);
  }
  void ShowWaitCursor(bool) override {}

  bool pauses = false;

 private:
  Event never_;
};

std::size_t EntryCount(const char* directory) {
  const std::filesystem::directory_iterator entries(directory);
  return static_cast<std::size_t>(std::distance(begin(entries), end(entries)));
}

std::size_t Descriptors() { return EntryCount("/proc/self/fd"); }
std::size_t Threads() { return EntryCount("/proc/self/task"); }

/// The system takes a joined thread off its list a moment later.
bool ThreadsBecome(std::size_t count) {
  const auto deadline = steady_clock::now() + 1min;
  while (Threads() != count && steady_clock::now() < deadline) std::this_thread::yield();
  return Threads() == count;
}

class PhoneLinkPosixTest : public testing::Test {
 protected:
  PhoneLinkPosixTest() { link.set_port_name(FromUtf8(pty.device())); }

  std::vector<std::u16string> TakeLines() {
    std::vector<std::u16string> lines;
    ResponseLine line;
    while (!Failed(link.TakeLine(line))) lines.emplace_back(line.text());
    return lines;
  }

  PseudoTerminal pty;
  FakeRegistry registry;
  NoPorts no_ports;
  PosixPortOpener real_ports{no_ports, 100ms};
  SpiedPortOpener ports{real_ports};
  PosixThreadStarter threads;
  RealWaiter waiter;
  PhoneLink link{ports, threads, registry, waiter};
  AtEngine engine{link, waiter};
};

TEST_F(PhoneLinkPosixTest, ThePhoneIsDetectedOverARealLine) {
  ASSERT_EQ(link.Open(), S_OK);
  std::string heard;
  std::thread phone([&] {
    heard = pty.Receive(8);
    EXPECT_TRUE(pty.Send("ATZE0V1\r\r\nOK\r\n"));
  });
  EXPECT_EQ(engine.DetectPhone(), S_OK);
  phone.join();
  EXPECT_EQ(heard, "ATZE0V1\r");
}

TEST_F(PhoneLinkPosixTest, WrittenBytesArriveUnchanged) {
  ASSERT_EQ(link.Open(), S_OK);
  std::vector<std::uint8_t> all(256);
  for (std::size_t i = 0; i < all.size(); ++i) all[i] = static_cast<std::uint8_t>(i);
  EXPECT_EQ(link.Write(all), S_OK);
  EXPECT_EQ(pty.Receive(all.size()), std::string(all.begin(), all.end()));
}

// The engine drops what a cut line end leaves before a line.
std::vector<std::u16string> AsTheEngineGivesThem(std::vector<std::u16string> lines) {
  for (std::u16string& line : lines) line.erase(0, std::min(line.find_first_not_of(u'\n'), line.size()));
  return lines;
}

TEST_F(PhoneLinkPosixTest, EverySplitOfAReplyGivesItsLines) {
  const std::string reply = "\r\n+CPBS: \"SM\",1\r\n\r\nOK\r\n";
  ASSERT_EQ(link.Open(), S_OK);
  for (std::size_t cut = 1; cut < reply.size(); ++cut) {
    link.FlushLines();
    ASSERT_TRUE(pty.Send(reply.substr(0, cut)));
    ASSERT_TRUE(ports.spy.WaitForBytes(cut));
    // The last return completes the line that a cut before the last line feed leaves open.
    ASSERT_TRUE(pty.Send(reply.substr(cut) + "\r"));
    ASSERT_TRUE(ports.spy.WaitForBytes(reply.size() + 1));
    const auto chunks = ports.spy.TakeChunks();
    const auto expected = AsTheEngineGivesThem(ExpectedLines({chunks.begin(), chunks.end()}));
    ASSERT_THAT(expected, testing::Contains(u"OK"));
    std::vector<std::u16string> lines;
    ResponseLine line;
    while (lines.size() < expected.size() && !Failed(engine.WaitLine(line, 60s)))
      lines.emplace_back(line.text());
    EXPECT_EQ(lines, expected) << "cut at " << cut;
    EXPECT_TRUE(TakeLines().empty());
  }
}

TEST_F(PhoneLinkPosixTest, ALongListingComesThroughWhole) {
  ASSERT_EQ(link.Open(), S_OK);
  std::string listing;
  std::vector<std::u16string> expected;
  for (int i = 1; i <= 250; ++i) {
    const std::string entry = "+CPBR: " + std::to_string(i) + ",\"+4917012345\",145,\"A name\"";
    listing += entry + "\r\n";
    expected.push_back(FromUtf8(entry));
  }
  ASSERT_TRUE(pty.Send(listing));
  std::vector<std::u16string> lines;
  ResponseLine line;
  while (lines.size() < expected.size() && !Failed(engine.WaitLine(line, 60s))) {
    if (!line.text().empty()) lines.emplace_back(line.text());
  }
  EXPECT_EQ(lines, expected);
}

TEST_F(PhoneLinkPosixTest, TheStoredParametersReachTheTerminal) {
  LineParameters parameters;
  parameters.baud_rate = 57600;
  ASSERT_EQ(StoreLineParameters(registry, link.port_name(), parameters), S_OK);
  ASSERT_EQ(link.Open(), S_OK);
  const termios settings = pty.Settings();
  EXPECT_EQ(::cfgetospeed(&settings), static_cast<speed_t>(B57600));
}

TEST_F(PhoneLinkPosixTest, TheFirstOpenStoresThePresentParameters) {
  ASSERT_EQ(link.Open(), S_OK);
  EXPECT_EQ(LoadLineParameters(registry, link.port_name()), link.port()->Parameters());
}

TEST_F(PhoneLinkPosixTest, APortInUseDoesNotOpen) {
  ASSERT_EQ(link.Open(), S_OK);
  PhoneLink second(real_ports, threads, registry, waiter);
  second.set_port_name(link.port_name());
  EXPECT_EQ(second.Open(), E_FAIL);
  EXPECT_EQ(second.open_problem(), OpenProblem::kInUse);
  EXPECT_FALSE(second.IsOpen());
  EXPECT_EQ(link.Close(), S_OK);
  EXPECT_EQ(second.Open(), S_OK);
}

TEST_F(PhoneLinkPosixTest, APortThatDoesNotExistLeavesTheLinkClosed) {
  link.set_port_name(u"/dev/no-such-port");
  EXPECT_EQ(link.Open(), E_FAIL);
  EXPECT_EQ(link.open_problem(), OpenProblem::kNoSuchPort);
  EXPECT_FALSE(link.IsOpen());
}

TEST_F(PhoneLinkPosixTest, CloseDuringABlockedReadTakesItsPauseAndEndsTheReader) {
  waiter.pauses = true;
  const std::size_t threads_before = Threads();
  ASSERT_EQ(link.Open(), S_OK);
  ASSERT_TRUE(pty.Send("\r\n"));
  ASSERT_TRUE(ports.spy.WaitForBytes(2));
  const auto start = steady_clock::now();
  EXPECT_EQ(link.Close(), S_OK);
  const auto took = std::chrono::duration_cast<milliseconds>(steady_clock::now() - start);
  EXPECT_GE(took, 200ms);
  RecordProperty("close_ms", static_cast<int>(took.count()));
  EXPECT_TRUE(ThreadsBecome(threads_before));
}

TEST_F(PhoneLinkPosixTest, AThousandSessionsLeaveNoDescriptorAndNoThread) {
  const std::size_t threads_before = Threads();
  const std::size_t descriptors_before = Descriptors();
  for (int i = 0; i < 1000; ++i) {
    ASSERT_EQ(link.Open(), S_OK) << i;
    ASSERT_EQ(link.Close(), S_OK) << i;
  }
  EXPECT_TRUE(ThreadsBecome(threads_before));
  EXPECT_EQ(Descriptors(), descriptors_before);
}

TEST_F(PhoneLinkPosixTest, AnUnpluggedLineCostsHardlyAnyTime) {
  ASSERT_EQ(link.Open(), S_OK);
  pty.Unplug();
  ASSERT_TRUE(ports.spy.WaitForFailedReads(1));
  const std::clock_t busy = std::clock();
  const auto start = steady_clock::now();
  ASSERT_TRUE(ports.spy.WaitForFailedReads(11));
  const std::chrono::duration<double> passed = steady_clock::now() - start;
  const double used = static_cast<double>(std::clock() - busy) / CLOCKS_PER_SEC;
  EXPECT_LT(used, passed.count() / 4);
  RecordProperty("cpu_ms", static_cast<int>(used * 1000));
  RecordProperty("passed_ms", static_cast<int>(passed.count() * 1000));
}

TEST_F(PhoneLinkPosixTest, AnUnpluggedLineClosesAndCannotBeOpenedAgain) {
  const std::size_t threads_before = Threads();
  ASSERT_EQ(link.Open(), S_OK);
  pty.Unplug();
  ASSERT_TRUE(ports.spy.WaitForFailedReads(1));
  EXPECT_TRUE(link.IsOpen());
  EXPECT_EQ(engine.Send(u"AT\r"), E_FAIL);
  EXPECT_EQ(link.Close(), S_OK);
  EXPECT_TRUE(ThreadsBecome(threads_before));
  EXPECT_EQ(link.Open(), E_FAIL);
  EXPECT_EQ(link.open_problem(), OpenProblem::kNoSuchPort);
}

}  // namespace
}  // namespace celldesk
