#include "support/manual_waiter.h"

#include <algorithm>
#include <utility>

namespace celldesk {

using std::chrono::milliseconds;

bool ManualWaiter::WaitFor(Event& event, milliseconds timeout) {
  const milliseconds start = now_;
  milliseconds deadline = now_ + timeout;
  bool handled_message = false;
  while (!event.IsSet() && RunNext(deadline, handled_message)) {
    if (handled_message) deadline = now_ + timeout;
  }
  const bool signalled = event.IsSet();
  if (!signalled) now_ = deadline;
  waits_.push_back({timeout, now_ - start, signalled});
  return signalled;
}

void ManualWaiter::Pause(milliseconds duration) {
  const milliseconds deadline = now_ + duration;
  bool handled_message = false;
  while (RunNext(deadline, handled_message)) {
  }
  now_ = deadline;
  pauses_.push_back(duration);
}

void ManualWaiter::ShowWaitCursor(bool visible) { wait_cursor_.push_back(visible); }

void ManualWaiter::Post(milliseconds when, std::function<void()> message) {
  messages_.emplace(when, std::move(message));
}

std::optional<milliseconds> ManualWaiter::NextSourceDue() const {
  std::optional<milliseconds> next;
  for (const ClockedSource* source : sources_) {
    const auto due = source->NextDue();
    if (due && (!next || *due < *next)) next = due;
  }
  return next;
}

/// Moves the clock to the next thing that happens by `deadline` and lets it happen; false when there is none.
bool ManualWaiter::RunNext(milliseconds deadline, bool& handled_message) {
  const auto source_due = NextSourceDue();
  const auto message = messages_.begin();
  handled_message = message != messages_.end() && message->first <= deadline &&
                    (!source_due || message->first < *source_due);
  if (!handled_message && (!source_due || *source_due > deadline)) return false;
  if (!handled_message) {
    now_ = std::max(now_, *source_due);
    for (ClockedSource* source : sources_) source->RunDue(now_);
    return true;
  }
  now_ = std::max(now_, message->first);
  const auto run = std::move(message->second);
  messages_.erase(message);
  run();
  return true;
}

}  // namespace celldesk
