#pragma once

#include <chrono>
#include <condition_variable>
#include <functional>
#include <mutex>

namespace celldesk {

/// Manual-reset event. Any thread may set, reset and wait.
class Event {
 public:
  void Set();
  void Reset();
  bool IsSet() const;
  /// Waits until the event is set; false when `timeout` passes first.
  bool Wait(std::chrono::milliseconds timeout);

  /// `hook` runs on the setting thread after each Set that turned the event on, and at once when the event is
  /// already on; it must only wake somebody and must not touch the event. An empty hook removes it: when this
  /// call returns, the old hook is not running and will not run again.
  void SetHook(std::function<void()> hook);

 private:
  mutable std::mutex lock_;
  std::condition_variable changed_;
  bool set_ = false;
  std::mutex hook_lock_;
  std::function<void()> hook_;
};

}  // namespace celldesk
