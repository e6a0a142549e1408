#include "platform/posix/posix_thread.h"

#include <gtest/gtest.h>
#include <sys/resource.h>
#include <unistd.h>

#include <algorithm>
#include <atomic>
#include <memory>

#include "platform/event.h"

namespace celldesk {
namespace {

using std::chrono::milliseconds;
constexpr std::chrono::minutes kDeadline{1};

TEST(PosixThread, RunsItsBodyOnAnotherThread) {
  PosixThreadStarter starter;
  std::atomic<pid_t> id{0};
  const auto thread = starter.Start([&] { id = ::gettid(); });
  ASSERT_NE(thread, nullptr);
  EXPECT_TRUE(thread->Join(kDeadline));
  EXPECT_NE(id, 0);
  EXPECT_NE(id, ::gettid());
}

TEST(PosixThread, JoinGivesUpAfterItsTimeAndMayBeTriedAgain) {
  PosixThreadStarter starter;
  Event go;
  const auto thread = starter.Start([&] { go.Wait(kDeadline); });
  EXPECT_FALSE(thread->Join(milliseconds(1)));
  EXPECT_FALSE(thread->Join(milliseconds(0)));
  go.Set();
  EXPECT_TRUE(thread->Join(kDeadline));
  EXPECT_TRUE(thread->Join(milliseconds(0)));
}

TEST(PosixThread, AThreadThatWasNotJoinedRunsOnAlone) {
  PosixThreadStarter starter;
  const auto go = std::make_shared<Event>(), ended = std::make_shared<Event>();
  auto thread = starter.Start([go, ended] {
    go->Wait(kDeadline);
    ended->Set();
  });
  thread.reset();
  EXPECT_FALSE(ended->IsSet());
  go->Set();
  EXPECT_TRUE(ended->Wait(kDeadline));
}

TEST(PosixThread, BelowNormalIsANicerThread) {
  PosixThreadStarter starter;
  Event changed;
  const int own = ::getpriority(PRIO_PROCESS, 0);
  int nice_value = 0;
  const auto thread = starter.Start([&] {
    changed.Wait(kDeadline);
    nice_value = ::getpriority(PRIO_PROCESS, static_cast<id_t>(::gettid()));
  });
  thread->SetPriority(ThreadPriority::kBelowNormal);
  changed.Set();
  ASSERT_TRUE(thread->Join(kDeadline));
  EXPECT_EQ(nice_value, std::min(own + 5, 19)) << "19 is the nicest that there is";
  EXPECT_EQ(::getpriority(PRIO_PROCESS, 0), own);
}

TEST(PosixThread, PriorityOfAThreadThatHasEndedIsNobodysBusiness) {
  PosixThreadStarter starter;
  const auto thread = starter.Start([] {});
  ASSERT_TRUE(thread->Join(kDeadline));
  const int before = ::getpriority(PRIO_PROCESS, 0);
  thread->SetPriority(ThreadPriority::kBelowNormal);
  EXPECT_EQ(::getpriority(PRIO_PROCESS, 0), before);
}

TEST(PosixThread, ManyThreadsComeAndGo) {
  PosixThreadStarter starter;
  std::atomic<int> runs{0};
  for (int i = 0; i < 200; ++i) {
    const auto thread = starter.Start([&] { ++runs; });
    thread->SetPriority(ThreadPriority::kNormal);
    ASSERT_TRUE(thread->Join(kDeadline));
  }
  EXPECT_EQ(runs, 200);
}

}  // namespace
}  // namespace celldesk
