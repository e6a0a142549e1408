#pragma once

#include <cstdint>
#include <list>
#include <mutex>
#include <string>
#include <string_view>

#include "platform/event.h"

namespace celldesk {

/// Received text split into lines at carriage returns. The reader thread receives, the interface thread
/// takes; one lock guards the lines, and the event is set and reset while it is held.
class LineQueue {
 public:
  /// Splits `text` (a chunk as it came from the port) and signals the event once when a line was completed.
  void Receive(std::u16string_view text);
  /// Moves the oldest complete line into `text`; false when there is none. The event stays set only while
  /// another complete line waits.
  bool Take(std::u16string& text);
  /// Deletes every line, complete or not.
  void Flush();

  /// Set while a complete line waits at the head.
  Event& line_event() { return line_event_; }
  std::uint32_t completed_chunks() const;
  void ResetCompletedChunks();

 private:
  struct Line {
    std::u16string text;
    bool complete = false;
  };

  mutable std::mutex lock_;
  std::list<Line> lines_;  // guarded by lock_; only the newest may be incomplete
  std::uint32_t completed_chunks_ = 0;
  Event line_event_;
};

}  // namespace celldesk
