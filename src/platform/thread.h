#pragma once

#include <chrono>
#include <functional>
#include <memory>

namespace celldesk {

enum class ThreadPriority { kNormal = 3, kAboveNormal = 2, kBelowNormal = 4 };

/// A running thread. Destroying it without a successful Join lets the thread run on alone.
class Thread {
 public:
  virtual ~Thread() = default;
  /// Best effort: where the system does not allow it the thread goes on as it was.
  virtual void SetPriority(ThreadPriority priority) = 0;
  /// Waits for the thread's end; false when `timeout` passes first.
  virtual bool Join(std::chrono::milliseconds timeout) = 0;
};

/// Starts threads. Borrowed for the whole run.
class ThreadStarter {
 public:
  virtual ~ThreadStarter() = default;
  /// Runs `body` on a new thread at once; null when the system refuses.
  virtual std::unique_ptr<Thread> Start(std::function<void()> body) = 0;
};

}  // namespace celldesk
