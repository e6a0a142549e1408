#include "platform/event.h"

#include <utility>

namespace celldesk {

void Event::Set() {
  {
    std::lock_guard guard(lock_);
    if (set_) return;
    set_ = true;
  }
  changed_.notify_all();
  std::lock_guard guard(hook_lock_);
  if (hook_) hook_();
}

void Event::Reset() {
  std::lock_guard guard(lock_);
  set_ = false;
}

bool Event::IsSet() const {
  std::lock_guard guard(lock_);
  return set_;
}

bool Event::Wait(std::chrono::milliseconds timeout) {
  std::unique_lock guard(lock_);
  return changed_.wait_for(guard, timeout, [this] { return set_; });
}

void Event::SetHook(std::function<void()> hook) {
  std::lock_guard guard(hook_lock_);
  hook_ = std::move(hook);
  if (hook_ && IsSet()) hook_();
}

}  // namespace celldesk
