#pragma once

#include <chrono>
#include <functional>
#include <map>
#include <optional>
#include <vector>

#include "link/waiter.h"

namespace celldesk {

/// Something that happens by itself while the clock of a test runs, such as bytes that come in.
class ClockedSource {
 public:
  virtual ~ClockedSource() = default;
  /// When the next thing happens; none when nothing is under way.
  virtual std::optional<std::chrono::milliseconds> NextDue() const = 0;
  /// Lets happen what is due at `now`.
  virtual void RunDue(std::chrono::milliseconds now) = 0;
};

/// A waiter with a clock of its own, which starts at 0 and moves only here: exactly to the next thing that
/// happens, or to the end of the wait. Nothing ever sleeps.
class ManualWaiter : public Waiter {
 public:
  struct Wait {
    std::chrono::milliseconds timeout{};
    std::chrono::milliseconds took{};
    bool signalled = false;

    friend bool operator==(const Wait&, const Wait&) = default;
  };

  bool WaitFor(Event& event, std::chrono::milliseconds timeout) override;
  void Pause(std::chrono::milliseconds duration) override;
  void ShowWaitCursor(bool visible) override;

  /// `source` is borrowed for the waiter's life.
  void Attach(ClockedSource& source) { sources_.push_back(&source); }
  /// A message that the next wait or pause handles at `when` (at once when that has passed). Handling one
  /// starts the time-out of a wait anew.
  void Post(std::chrono::milliseconds when, std::function<void()> message);

  std::chrono::milliseconds now() const { return now_; }
  const std::vector<Wait>& waits() const { return waits_; }
  const std::vector<std::chrono::milliseconds>& pauses() const { return pauses_; }
  /// Every call of ShowWaitCursor, in order.
  const std::vector<bool>& wait_cursor() const { return wait_cursor_; }

 private:
  std::optional<std::chrono::milliseconds> NextSourceDue() const;
  bool RunNext(std::chrono::milliseconds deadline, bool& handled_message);

  std::chrono::milliseconds now_{};
  std::vector<ClockedSource*> sources_;
  std::multimap<std::chrono::milliseconds, std::function<void()>> messages_;
  std::vector<Wait> waits_;
  std::vector<std::chrono::milliseconds> pauses_;
  std::vector<bool> wait_cursor_;
};

}  // namespace celldesk
