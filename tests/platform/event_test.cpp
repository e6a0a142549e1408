#include "platform/event.h"

#include <gtest/gtest.h>

#include <atomic>
#include <thread>
#include <vector>

namespace celldesk {
namespace {

using std::chrono::milliseconds;
constexpr std::chrono::minutes kDeadline{1};

TEST(Event, IsNotSetAtFirst) {
  Event event;
  EXPECT_FALSE(event.IsSet());
  EXPECT_FALSE(event.Wait(milliseconds(0)));
  EXPECT_FALSE(event.Wait(milliseconds(1)));
}

TEST(Event, StaysSetUntilItIsReset) {
  Event event;
  event.Set();
  EXPECT_TRUE(event.Wait(milliseconds(0)));
  EXPECT_TRUE(event.Wait(milliseconds(0)));
  EXPECT_TRUE(event.IsSet());
  event.Reset();
  EXPECT_FALSE(event.IsSet());
  EXPECT_FALSE(event.Wait(milliseconds(0)));
}

TEST(Event, SettingWakesEveryWaiter) {
  Event event;
  std::atomic<int> woken{0};
  std::vector<std::thread> waiters;
  for (int i = 0; i < 4; ++i)
    waiters.emplace_back([&] {
      if (event.Wait(kDeadline)) ++woken;
    });
  event.Set();
  for (std::thread& waiter : waiters) waiter.join();
  EXPECT_EQ(woken, 4);
}

TEST(Event, TheHookRunsOnceForEachTimeTheEventTurnsOn) {
  Event event;
  int calls = 0;
  event.SetHook([&] { ++calls; });
  EXPECT_EQ(calls, 0);
  event.Set();
  event.Set();
  EXPECT_EQ(calls, 1);
  event.Reset();
  EXPECT_EQ(calls, 1);
  event.Set();
  EXPECT_EQ(calls, 2);
}

TEST(Event, AHookOnAnEventThatIsOnRunsAtOnce) {
  Event event;
  event.Set();
  int calls = 0;
  event.SetHook([&] { ++calls; });
  EXPECT_EQ(calls, 1);
}

TEST(Event, TheHookRunsOnTheSettingThread) {
  Event event;
  std::thread::id ran;
  event.SetHook([&] { ran = std::this_thread::get_id(); });
  std::thread::id setter;
  std::thread([&] {
    setter = std::this_thread::get_id();
    event.Set();
  }).join();
  EXPECT_EQ(ran, setter);
}

TEST(Event, ARemovedHookRunsNoMore) {
  Event event;
  int calls = 0;
  event.SetHook([&] { ++calls; });
  event.SetHook(nullptr);
  event.Set();
  EXPECT_EQ(calls, 0);
}

TEST(Event, AnotherHookTakesThePlaceOfTheFirst) {
  Event event;
  int first = 0, second = 0;
  event.SetHook([&] { ++first; });
  event.SetHook([&] { ++second; });
  event.Set();
  EXPECT_EQ(first, 0);
  EXPECT_EQ(second, 1);
}

TEST(Event, AHookIsNeverRunningOnceItsRemovalReturned) {
  Event event;
  std::atomic<bool> running{true}, late{false};
  std::thread setter([&] {
    while (running) {
      event.Set();
      event.Reset();
    }
  });
  for (int i = 0; i < 2000; ++i) {
    std::atomic<bool> removed{false};
    event.SetHook([&] {
      if (removed) late = true;
    });
    event.SetHook(nullptr);
    removed = true;
  }
  running = false;
  setter.join();
  EXPECT_FALSE(late);
}

TEST(Event, ASetThatMeetsAResetIsSeenByAWaiterOrLeavesTheEventOn) {
  Event event;
  std::atomic<int> hooks{0};
  event.SetHook([&] { ++hooks; });
  std::thread setter([&] {
    for (int i = 0; i < 5000; ++i) event.Set();
  });
  int resets = 0;
  for (int i = 0; i < 5000; ++i) {
    if (!event.IsSet()) continue;
    event.Reset();
    ++resets;
  }
  setter.join();
  event.SetHook(nullptr);
  // The setter is the only one to turn it on, this thread the only one to turn it off.
  EXPECT_EQ(hooks, resets + (event.IsSet() ? 1 : 0));
}

TEST(Event, TwoThreadsMayPlayPingPongForever) {
  Event ping, pong;
  constexpr int kRounds = 2000;
  std::thread other([&] {
    for (int i = 0; i < kRounds; ++i) {
      if (!ping.Wait(kDeadline)) return;
      ping.Reset();
      pong.Set();
    }
  });
  int rounds = 0;
  for (; rounds < kRounds; ++rounds) {
    ping.Set();
    if (!pong.Wait(kDeadline)) break;
    pong.Reset();
  }
  other.join();
  EXPECT_EQ(rounds, kRounds);
}

}  // namespace
}  // namespace celldesk
