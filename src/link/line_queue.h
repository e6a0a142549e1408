#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "platform/event.h"
#include "util/thread_annotations.h"

namespace celldesk {

/// Received text split into lines at carriage returns. The reader thread receives, the interface thread
/// takes; one lock guards the lines, and the event is set and reset while it is held. The event's hook may
/// therefore run under the lock: it must not call back into the queue.
class LineQueue {
 public:
  /// A line without an end (noise) keeps this many characters; what follows up to its end is dropped.
  static constexpr std::size_t kLongestLine = 1 << 20;

  /// Splits `chunk` (as it came from the port) and signals the event once when a line was completed. Every
  /// carriage return and line feed after a line's end is skipped, within this chunk only: a line feed that
  /// begins a chunk belongs to its line. What cannot be stored is dropped silently.
  void Receive(std::u16string_view chunk);
  /// Moves the oldest complete line into `text`; false, with `text` unchanged, when there is none.
  bool Take(std::u16string& text);
  /// Deletes every line, complete or not.
  void Flush();
  /// For a newly opened port: no line announced and no chunk counted yet. Lines from before stay.
  void Restart();

  /// Set while a complete line waits at the head.
  Event& line_event() { return line_event_; }
  /// Chunks that completed at least one line, since Restart.
  std::uint32_t completed_chunks() const;

 private:
  struct Line {
    std::u16string text;
    bool complete = false;
  };

  bool IsEmpty() const CELLDESK_REQUIRES(lock_) { return head_ == lines_.size(); }
  bool HasCompleteLine() const CELLDESK_REQUIRES(lock_) { return !IsEmpty() && lines_[head_].complete; }
  void DropTaken() CELLDESK_REQUIRES(lock_);
  bool Append(std::u16string_view segment, bool ends_line) CELLDESK_REQUIRES(lock_);

  mutable Mutex lock_;
  // Oldest first; only the newest may be incomplete. Those before the head were taken: their room is used
  // again, so that a line needs no memory but its text's.
  std::vector<Line> lines_ CELLDESK_GUARDED_BY(lock_);
  std::size_t head_ CELLDESK_GUARDED_BY(lock_) = 0;
  std::uint32_t completed_chunks_ CELLDESK_GUARDED_BY(lock_) = 0;
  Event line_event_;
};

}  // namespace celldesk
