#pragma once

#include <atomic>
#include <chrono>
#include <functional>
#include <memory>
#include <vector>

#include "platform/thread.h"

namespace celldesk {

/// Threads that do not run: the body is kept, and runs when the test says so. Outlives the threads.
class FakeThreadStarter : public ThreadStarter {
 public:
  std::unique_ptr<Thread> Start(std::function<void()> body) override;

  bool refuse = false;  ///< Start gives no thread
  bool stuck = false;   ///< Join times out

  std::vector<std::function<void()>> bodies;  ///< of every thread started and not yet joined
  std::vector<ThreadPriority> priorities;     ///< every priority set, in order
  std::vector<std::chrono::milliseconds> joins;
  int started = 0;
};

/// Real threads on the standard library alone.
class StdThreadStarter : public ThreadStarter {
 public:
  std::unique_ptr<Thread> Start(std::function<void()> body) override;
  /// Threads whose body has not returned yet.
  int running() const { return *running_; }

 private:
  std::shared_ptr<std::atomic<int>> running_ = std::make_shared<std::atomic<int>>(0);
};

}  // namespace celldesk
