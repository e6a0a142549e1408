#include "platform/posix/posix_port_inspector.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include "platform/posix/descriptor.h"
#include "platform/posix/posix_serial_port.h"
#include "support/child_process.h"
#include "support/pseudo_terminal.h"
#include "support/temporary_folder.h"
#include "util/text.h"

namespace celldesk {
namespace {

using Kind = PortObstacle::Kind;

/// Two ends of a pipe, to hear of a child and to let it go.
struct Pipe {
  Pipe() {
    int ends[2] = {-1, -1};
    EXPECT_EQ(::pipe(ends), 0);
    read = Descriptor(ends[0]);
    write = Descriptor(ends[1]);
  }
  void Tell() const { EXPECT_EQ(::write(write.get(), "!", 1), 1); }
  bool Hear() const {
    char byte = 0;
    return ::read(read.get(), &byte, 1) == 1;
  }
  Descriptor read, write;
};

PortObstacle Look(const std::string& device) { return PosixPortInspector().DescribeHolder(FromUtf8(device)); }

TEST(PosixPortInspector, NothingStandsBeforeAFreePort) {
  PseudoTerminal pty;
  EXPECT_EQ(Look(pty.device()), PortObstacle());
}

TEST(PosixPortInspector, ADeviceThatIsNotThereIsGone) {
  EXPECT_EQ(Look("/dev/ttyUSB-none").kind, Kind::kGone);
  EXPECT_EQ(Look("").kind, Kind::kGone);
}

TEST(PosixPortInspector, NamesTheProcessThatHoldsThePort) {
  PseudoTerminal pty;
  Pipe opened, finish;
  ChildProcess holder([&] {
    OpenProblem problem = OpenProblem::kNone;
    const auto port = PosixSerialPort::Open(pty.device(), PosixSerialPort::kGoneDelay, problem);
    opened.Tell();
    return port && finish.Hear() ? 0 : 1;
  });
  ASSERT_TRUE(opened.Hear());
  const PortObstacle obstacle = Look(pty.device());
  EXPECT_EQ(obstacle.kind, Kind::kHeld);
  EXPECT_EQ(obstacle.process_id, holder.id());
  EXPECT_FALSE(obstacle.process.empty());
  finish.Tell();
  EXPECT_EQ(holder.ExitCode(), 0);
  EXPECT_EQ(Look(pty.device()).kind, Kind::kNone);
}

TEST(PosixPortInspector, OpenFilesTellWhoHoldsADeviceWithoutALock) {
  TemporaryFolder processes;
  std::filesystem::create_directories(processes.path() / "4711/fd");
  std::filesystem::create_directories(processes.path() / "self/fd");
  std::filesystem::create_symlink("/dev/null", processes.path() / "4711/fd/3");
  processes.Write("4711/comm", "minicom\n");
  PosixPortInspector inspector(processes.path());
  const PortObstacle obstacle = inspector.DescribeHolder(u"/dev/null");
  EXPECT_EQ(obstacle, (PortObstacle{Kind::kHeld, u"", u"minicom", 4711}));
  EXPECT_EQ(inspector.DescribeHolder(u"/dev/zero").kind, Kind::kNone);
}

TEST(PosixPortInspector, TheProgramBehindAPseudoTerminalIsNoObstacle) {
  PseudoTerminal pty;
  const Descriptor other_end(::open(pty.device().c_str(), O_RDWR | O_NOCTTY | O_CLOEXEC));
  Pipe finish;
  ChildProcess simulator([&] { return finish.Hear() ? 0 : 1; });
  EXPECT_EQ(Look(pty.device()).kind, Kind::kNone);
  finish.Tell();
  EXPECT_EQ(simulator.ExitCode(), 0);
}

TEST(PosixPortInspector, AnUnreadableProcessTreeTellsNothing) {
  EXPECT_EQ(PosixPortInspector("/no/such/folder").DescribeHolder(u"/dev/null").kind, Kind::kNone);
}

TEST(PosixPortInspector, MissingPermissionNamesTheGroupThatHasIt) {
  PseudoTerminal pty;
  ASSERT_EQ(::chmod(pty.device().c_str(), 0060), 0);
  struct stat status {};
  ASSERT_EQ(::stat(pty.device().c_str(), &status), 0);
  ChildProcess user([&] {
    BecomeOrdinaryUser();
    const PortObstacle obstacle = Look(pty.device());
    return obstacle.kind == Kind::kNoPermission && !obstacle.group.empty() ? 0 : 1;
  });
  EXPECT_EQ(user.ExitCode(), 0);
}

TEST(PosixPortInspector, MissingPermissionWithoutAGroupNamesNone) {
  PseudoTerminal pty;
  ASSERT_EQ(::chmod(pty.device().c_str(), 0), 0);
  ChildProcess user([&] {
    BecomeOrdinaryUser();
    const PortObstacle obstacle = Look(pty.device());
    return obstacle.kind == Kind::kNoPermission && obstacle.group.empty() ? 0 : 1;
  });
  EXPECT_EQ(user.ExitCode(), 0);
}

}  // namespace
}  // namespace celldesk
