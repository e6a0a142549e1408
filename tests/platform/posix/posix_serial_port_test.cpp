#include "platform/posix/posix_serial_port.h"

#include <fcntl.h>
#include <sys/ioctl.h>
#include <sys/stat.h>
#include <time.h>

#include <filesystem>
#include <functional>

#include "platform/serial_port_contract.h"
#include "support/child_process.h"
#include "support/pseudo_terminal.h"
#include "util/text.h"

namespace celldesk {
namespace {

using std::chrono::hours;
using std::chrono::milliseconds;

class NoPorts : public PortList {
 public:
  std::vector<PortInfo> ActivePorts() override { return {}; }
};

class PtyLine {
 public:
  std::unique_ptr<SerialPort> Open(OpenProblem* problem) {
    return opener_.Open(FromUtf8(pty_.device()), problem);
  }
  bool Send(std::string_view bytes) { return pty_.Send(bytes); }
  std::string Receive(std::size_t count) { return pty_.Receive(count); }
  bool WaitForBytes() { return pty_.WaitForBytes(); }
  void Unplug() { pty_.Unplug(); }

 private:
  PseudoTerminal pty_;
  NoPorts ports_;
  PosixPortOpener opener_{ports_, hours(1)};
};

INSTANTIATE_TYPED_TEST_SUITE_P(PseudoTerminal, SerialPortContract, PtyLine);

std::unique_ptr<PosixSerialPort> OpenDevice(const std::string& device, OpenProblem* problem = nullptr,
                                            milliseconds gone_delay = hours(1)) {
  OpenProblem found = OpenProblem::kNone;
  auto port = PosixSerialPort::Open(device, gone_delay, found);
  if (problem) *problem = found;
  return port;
}

std::size_t EntryCount(const char* directory) {
  const std::filesystem::directory_iterator entries(directory);
  return static_cast<std::size_t>(std::distance(begin(entries), end(entries)));
}

bool WaitUntil(const std::function<bool()>& condition) {
  const auto deadline = std::chrono::steady_clock::now() + std::chrono::minutes(1);
  while (!condition() && std::chrono::steady_clock::now() < deadline) std::this_thread::yield();
  return condition();
}

int Unread(int line) {
  int count = -1;
  return ::ioctl(line, FIONREAD, &count) == 0 ? count : -1;
}

double ThreadCpuSeconds() {
  timespec used{};
  ::clock_gettime(CLOCK_THREAD_CPUTIME_ID, &used);
  return static_cast<double>(used.tv_sec) + static_cast<double>(used.tv_nsec) / 1e9;
}

TEST(PosixSerialPort, ATerminalIsRawWhileOpenAndAsItWasFoundAfterwards) {
  PseudoTerminal pty;
  termios typed = pty.Settings();
  typed.c_lflag |= ICANON | ECHO;
  typed.c_iflag |= ICRNL | IXON;
  ::cfsetspeed(&typed, B19200);
  pty.SetSettings(typed);

  auto port = OpenDevice(pty.device());
  ASSERT_NE(port, nullptr);
  EXPECT_EQ(pty.Settings().c_lflag & (ICANON | ECHO | ISIG), 0U);
  EXPECT_EQ(pty.Settings().c_iflag & (ICRNL | IXON), 0U);
  EXPECT_EQ(port->Parameters()->baud_rate, 19200U);
  EXPECT_EQ(port->SetParameters(LineParameters()), S_OK);

  port.reset();
  EXPECT_EQ(pty.Settings().c_lflag & (ICANON | ECHO), tcflag_t{ICANON | ECHO});
  EXPECT_EQ(pty.Settings().c_iflag & (ICRNL | IXON), tcflag_t{ICRNL | IXON});
  EXPECT_EQ(::cfgetospeed(&typed), speed_t{B19200});
}

TEST(PosixSerialPort, TheTerminalTakesTheSpeedAndTheFlowControlThatWereSet) {
  PseudoTerminal pty;
  const auto port = OpenDevice(pty.device());
  LineParameters parameters;
  parameters.baud_rate = 57600;
  parameters.flags = LineParameters::kBinary | LineParameters::kOutX | LineParameters::kInX;
  parameters.xon_char = 20;
  parameters.xoff_char = 21;
  ASSERT_EQ(port->SetParameters(parameters), S_OK);
  const termios settings = pty.Settings();
  EXPECT_EQ(::cfgetospeed(&settings), speed_t{B57600});
  EXPECT_EQ(settings.c_iflag & (IXON | IXOFF | IXANY), tcflag_t{IXON | IXOFF});
  EXPECT_EQ(settings.c_cc[VSTART], 20);
  EXPECT_EQ(settings.c_cc[VSTOP], 21);
}

TEST(PosixSerialPort, ASpeedThatIsNoStandardOneIsTakenToo) {
  PseudoTerminal pty;
  const auto port = OpenDevice(pty.device());
  LineParameters parameters;
  parameters.baud_rate = 14400;
  EXPECT_EQ(port->SetParameters(parameters), S_OK);
  EXPECT_EQ(port->Parameters(), parameters);
  parameters.baud_rate = 9600;
  EXPECT_EQ(port->SetParameters(parameters), S_OK);
  const termios settings = pty.Settings();
  EXPECT_EQ(::cfgetospeed(&settings), speed_t{B9600});
}

TEST(PosixSerialPort, AWriteThatNobodyTakesFailsAfterItsTime) {
  PseudoTerminal pty;
  const auto port = OpenDevice(pty.device());
  LineParameters fast;
  fast.baud_rate = 4'000'000;
  ASSERT_EQ(port->SetParameters(fast), S_OK);
  const std::vector<std::uint8_t> bytes(300'000, 'x');
  EXPECT_EQ(port->Write(bytes), E_FAIL);
}

TEST(PosixSerialPort, ReadsOnALineThatHasGoneFailSlowlyAndUseNoProcessor) {
  PseudoTerminal pty;
  const milliseconds delay(500);
  const auto port = OpenDevice(pty.device(), nullptr, delay);
  pty.Unplug();
  const auto start = std::chrono::steady_clock::now();
  const double cpu_start = ThreadCpuSeconds();
  std::uint8_t buffer[16];
  EXPECT_EQ(port->Read(buffer).status, E_FAIL);
  EXPECT_EQ(port->Read(buffer).status, E_FAIL);
  EXPECT_GE(std::chrono::steady_clock::now() - start, 2 * delay);
  EXPECT_LT(ThreadCpuSeconds() - cpu_start, 0.1);
}

TEST(PosixSerialPort, WhatAReadHasWhenTheLineGoesIsItsResult) {
  PseudoTerminal pty;
  const auto port = OpenDevice(pty.device());
  const Descriptor spy(::open(pty.device().c_str(), O_RDONLY | O_NOCTTY | O_CLOEXEC));
  ASSERT_EQ(port->SetReadInterval(hours(1)), S_OK);
  ReadResult result{E_FAIL, 0};
  std::uint8_t buffer[16];
  ASSERT_TRUE(pty.Send("OK"));
  ASSERT_TRUE(WaitUntil([&] { return Unread(spy.get()) == 2; }));
  std::thread reader([&] { result = port->Read(buffer); });
  EXPECT_TRUE(WaitUntil([&] { return Unread(spy.get()) == 0; }));
  pty.Unplug();
  reader.join();
  EXPECT_EQ(result.status, S_OK);
  EXPECT_EQ(result.count, 2U);
}

TEST(PosixSerialPort, APortHeldByAnotherProcessIsInUse) {
  PseudoTerminal pty;
  const auto port = OpenDevice(pty.device());
  ChildProcess other([&] {
    OpenProblem problem = OpenProblem::kNone;
    return OpenDevice(pty.device(), &problem) == nullptr ? static_cast<int>(problem) : 100;
  });
  EXPECT_EQ(other.ExitCode(), static_cast<int>(OpenProblem::kInUse));
}

TEST(PosixSerialPort, APortIsFreeAgainWhenItsHolderWasKilled) {
  PseudoTerminal pty;
  ASSERT_EQ(::chmod(pty.device().c_str(), 0666), 0);
  ChildProcess holder([&] {
    const auto port = OpenDevice(pty.device());
    if (!port) return 1;
    ::raise(SIGKILL);
    return 2;
  });
  ASSERT_EQ(holder.ExitCode(), -1);
  ChildProcess next([&] {
    BecomeOrdinaryUser();
    return OpenDevice(pty.device()) ? 0 : 1;
  });
  EXPECT_EQ(next.ExitCode(), 0);
}

TEST(PosixSerialPort, AnOrdinaryUserHearsOfMissingPermission) {
  PseudoTerminal pty;
  ASSERT_EQ(::chmod(pty.device().c_str(), 0), 0);
  ChildProcess user([&] {
    BecomeOrdinaryUser();
    OpenProblem problem = OpenProblem::kNone;
    return OpenDevice(pty.device(), &problem) == nullptr ? static_cast<int>(problem) : 100;
  });
  EXPECT_EQ(user.ExitCode(), static_cast<int>(OpenProblem::kNoPermission));
}

TEST(PosixSerialPort, WhatIsNoTerminalIsRefused) {
  OpenProblem problem = OpenProblem::kNone;
  EXPECT_EQ(OpenDevice("/dev/null", &problem), nullptr);
  EXPECT_EQ(problem, OpenProblem::kOther);
  EXPECT_EQ(OpenDevice("/dev/no-such-port", &problem), nullptr);
  EXPECT_EQ(problem, OpenProblem::kNoSuchPort);
}

TEST(PosixSerialPort, AThousandCyclesLeakNeitherDescriptorsNorThreads) {
  PseudoTerminal pty;
  ASSERT_NE(OpenDevice(pty.device()), nullptr);
  const std::size_t descriptors = EntryCount("/proc/self/fd"), threads = EntryCount("/proc/self/task");
  for (int i = 0; i < 1000; ++i) {
    const auto port = OpenDevice(pty.device());
    ASSERT_NE(port, nullptr) << "cycle " << i;
    ASSERT_EQ(OpenDevice(pty.device()), nullptr);
  }
  EXPECT_EQ(EntryCount("/proc/self/fd"), descriptors);
  EXPECT_EQ(EntryCount("/proc/self/task"), threads);
}

TEST(PosixSerialPort, ReaderPurgesAndWritesMayMeetAtAnyMoment) {
  PseudoTerminal pty;
  const auto port = OpenDevice(pty.device());
  std::atomic<bool> running{true};
  std::thread reader([&] {
    std::uint8_t buffer[256];
    while (running) EXPECT_EQ(port->Read(buffer).status, S_OK);
  });
  const std::uint8_t command[] = {'A', 'T', '\r'};
  for (int i = 0; i < 500; ++i) {
    EXPECT_TRUE(pty.Send("OK"));
    EXPECT_EQ(port->Write(command), S_OK);
    EXPECT_EQ(port->SetReadInterval(milliseconds(i % 3)), S_OK);
    port->Purge();
  }
  running = false;
  port->Purge();
  reader.join();
}

class OnePort : public PortList {
 public:
  explicit OnePort(std::string device) : device_(FromUtf8(device)) {}
  std::vector<PortInfo> ActivePorts() override { return {{u"COM3:", u"Phone", device_, u"id"}}; }

 private:
  std::u16string device_;
};

TEST(PosixPortOpener, OpensAPortByItsNameInTheList) {
  PseudoTerminal pty;
  OnePort ports(pty.device());
  PosixPortOpener opener(ports);
  OpenProblem problem = OpenProblem::kOther;
  const auto port = opener.Open(u"COM3:", &problem);
  ASSERT_NE(port, nullptr);
  EXPECT_EQ(problem, OpenProblem::kNone);
  EXPECT_EQ(opener.Open(u"COM3:", nullptr), nullptr);
}

TEST(PosixPortOpener, ANameThatIsNotInTheListIsNoSuchPort) {
  OnePort ports("/dev/null");
  PosixPortOpener opener(ports);
  for (const char16_t* name : {u"COM1:", u"COM3", u"", u"/dev/nothing-there"}) {
    OpenProblem problem = OpenProblem::kNone;
    EXPECT_EQ(opener.Open(name, &problem), nullptr);
    EXPECT_EQ(problem, OpenProblem::kNoSuchPort);
  }
}

}  // namespace
}  // namespace celldesk
