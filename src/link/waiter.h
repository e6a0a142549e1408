#pragma once

#include <chrono>

#include "platform/event.h"

namespace celldesk {

/// The only way in which a phone procedure lets time pass. The application implements it by pumping messages,
/// so that the window stays alive; tests with a clock of their own. Interface thread only.
class Waiter {
 public:
  virtual ~Waiter() = default;
  /// Waits until `event` is set; false on a time-out. The time-out counts from the last message handled.
  virtual bool WaitFor(Event& event, std::chrono::milliseconds timeout) = 0;
  /// Lets exactly `duration` pass.
  virtual void Pause(std::chrono::milliseconds duration) = 0;
  /// The wait cursor while the link closes.
  virtual void ShowWaitCursor(bool visible) = 0;
};

}  // namespace celldesk
