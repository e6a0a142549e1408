#include "platform/posix/posix_instance.h"

#include <gtest/gtest.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

#include <fstream>

#include "support/child_process.h"
#include "support/temporary_folder.h"

namespace celldesk {
namespace {

namespace fs = std::filesystem;

/// Reads when the test says so.
class ManualWatcher : public ReadWatcher {
 public:
  ManualWatcher(std::function<void()>& readable, bool& watching) : readable_(readable), watching_(watching) {}
  ~ManualWatcher() override { watching_ = false; }
  void Watch(int /*descriptor*/, std::function<void()> readable) override {
    readable_ = std::move(readable);
    watching_ = true;
  }
  void Stop() override { watching_ = false; }

 private:
  std::function<void()>& readable_;
  bool& watching_;
};

class PosixInstanceGateTest : public testing::Test {
 protected:
  PosixInstanceGateTest() {
    gate_ =
        std::make_unique<PosixInstanceGate>(std::make_unique<ManualWatcher>(readable_, watching_), Folder());
  }
  RuntimeFolder Folder() const { return {folder_.path() / "celldesk", true}; }
  fs::path Window() const { return Folder().path / "windows" / std::to_string(::getpid()); }
  /// Sends a byte to the announced window; false when its queue is full.
  bool Send(char byte) const {
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    Window().string().copy(address.sun_path, sizeof(address.sun_path) - 1);
    const Descriptor socket(::socket(AF_UNIX, SOCK_DGRAM | SOCK_NONBLOCK | SOCK_CLOEXEC, 0));
    return ::sendto(socket.get(), &byte, 1, 0, reinterpret_cast<const sockaddr*>(&address),
                    sizeof(address)) == 1;
  }
  void Announce() {
    gate_->Announce([this] { ++shown_; });
  }
  /// Another start of the program, in its own process.
  bool AnotherStartWakes() const {
    ChildProcess other([this] {
      std::function<void()> readable;
      bool watching = false;
      PosixInstanceGate gate(std::make_unique<ManualWatcher>(readable, watching), Folder());
      return gate.WakeOther() ? 1 : 0;
    });
    return other.ExitCode() == 1;
  }

  TemporaryFolder folder_;
  std::function<void()> readable_;
  bool watching_ = false;
  int shown_ = 0;
  std::unique_ptr<PosixInstanceGate> gate_;
};

TEST_F(PosixInstanceGateTest, FindsNobodyWhereNobodyRuns) { EXPECT_FALSE(gate_->WakeOther()); }

TEST_F(PosixInstanceGateTest, AnotherStartWakesTheAnnouncedWindow) {
  Announce();
  ASSERT_TRUE(watching_);
  EXPECT_TRUE(AnotherStartWakes());
  readable_();
  EXPECT_EQ(shown_, 1);
}

TEST_F(PosixInstanceGateTest, ManyStartsAreOneRequest) {
  Announce();
  for (int start = 0; start < 5; ++start) EXPECT_TRUE(AnotherStartWakes());
  readable_();
  readable_();
  EXPECT_EQ(shown_, 1);
}

TEST_F(PosixInstanceGateTest, AWindowWithAFullQueueHasBeenAsked) {
  Announce();
  while (Send('s')) continue;
  EXPECT_TRUE(AnotherStartWakes());
  readable_();
  EXPECT_EQ(shown_, 1);
}

TEST_F(PosixInstanceGateTest, OtherBytesAskForNothing) {
  Announce();
  ASSERT_TRUE(Send('x'));
  readable_();
  EXPECT_EQ(shown_, 0);
}

TEST_F(PosixInstanceGateTest, TheSecondAnnouncementChangesNothing) {
  Announce();
  gate_->Announce([] { ADD_FAILURE() << "the first is in force"; });
  EXPECT_TRUE(AnotherStartWakes());
  readable_();
  EXPECT_EQ(shown_, 1);
}

TEST_F(PosixInstanceGateTest, WhatAnEarlierProcessOfTheSameNumberLeftIsReplaced) {
  Announce();
  gate_->Withdraw();
  std::ofstream(Window()) << "left over";
  Announce();
  EXPECT_TRUE(watching_);
  EXPECT_TRUE(AnotherStartWakes());
}

TEST_F(PosixInstanceGateTest, AFolderTooDeepForASocketOnlyHidesTheWindow) {
  const RuntimeFolder deep{folder_.path() / std::string(150, 'x'), true};
  PosixInstanceGate gate(std::make_unique<ManualWatcher>(readable_, watching_), deep);
  gate.Announce([] {});
  EXPECT_FALSE(watching_);
  std::ofstream(deep.path / "windows" / "1") << "no socket";
  EXPECT_FALSE(gate.WakeOther());
}

TEST_F(PosixInstanceGateTest, DoesNotFindItself) {
  Announce();
  EXPECT_FALSE(gate_->WakeOther());
}

TEST_F(PosixInstanceGateTest, AWithdrawnWindowIsNotFoundAndLeavesNoTrace) {
  Announce();
  gate_->Withdraw();
  EXPECT_FALSE(watching_);
  EXPECT_FALSE(AnotherStartWakes());
  EXPECT_TRUE(fs::is_empty(Folder().path / "windows"));
  Announce();
  EXPECT_TRUE(AnotherStartWakes());
}

TEST_F(PosixInstanceGateTest, WhatACrashedWindowLeftIsRemoved) {
  ChildProcess crashed([this] {
    std::function<void()> readable;
    bool watching = false;
    PosixInstanceGate gate(std::make_unique<ManualWatcher>(readable, watching), Folder());
    gate.Announce([] {});
    ::_exit(7);
    return 0;
  });
  ASSERT_EQ(crashed.ExitCode(), 7);
  ASSERT_FALSE(fs::is_empty(Folder().path / "windows"));
  EXPECT_FALSE(gate_->WakeOther());
  EXPECT_TRUE(fs::is_empty(Folder().path / "windows"));
}

TEST_F(PosixInstanceGateTest, FindsTheWindowBehindOthersThatAnswerNot) {
  Announce();
  std::ofstream(Folder().path / "windows" / "0") << "no socket";
  std::ofstream(Folder().path / "windows" / "zz") << "no socket";
  EXPECT_TRUE(AnotherStartWakes());
}

TEST_F(PosixInstanceGateTest, KeepsOutOfAFolderThatOthersMayEnter) {
  Announce();
  ASSERT_EQ(::chmod(Folder().path.c_str(), 0755), 0);
  EXPECT_FALSE(AnotherStartWakes());
  gate_->Withdraw();
  Announce();
  EXPECT_FALSE(watching_);
}

TEST_F(PosixInstanceGateTest, AFolderThatCannotBeMadeOnlyHidesTheWindow) {
  std::ofstream(Folder().path) << "a file";
  Announce();
  EXPECT_FALSE(watching_);
  EXPECT_FALSE(gate_->WakeOther());
}

}  // namespace
}  // namespace celldesk
