#include "link/line_queue.h"

#include <algorithm>
#include <new>
#include <utility>

namespace celldesk {
namespace {

constexpr char16_t kCarriageReturn = u'\r';
constexpr std::u16string_view kLineEnds = u"\r\n";

// Room for a line that goes on in the next chunk: a whole PDU with its service centre, in hexadecimal.
constexpr std::size_t kLongestPduLine = std::size_t{2} * (164 + 12);

}  // namespace

void LineQueue::Receive(std::u16string_view chunk) {
  MutexLock guard(lock_);
  bool completed = false;
  while (!chunk.empty()) {
    const std::size_t length = std::min(chunk.find(kCarriageReturn), chunk.size());
    const bool ends_line = length < chunk.size();
    completed |= Append(chunk.substr(0, length), ends_line);
    chunk.remove_prefix(std::min(chunk.find_first_not_of(kLineEnds, length), chunk.size()));
  }
  if (!completed) return;
  ++completed_chunks_;
  line_event_.Set();
}

bool LineQueue::Take(std::u16string& text) {
  MutexLock guard(lock_);
  const bool has_line = HasCompleteLine();
  if (has_line) {
    text = std::move(lines_[head_++].text);
    DropTaken();
  }
  if (!HasCompleteLine()) line_event_.Reset();
  return has_line;
}

void LineQueue::Flush() {
  MutexLock guard(lock_);
  lines_.clear();
  head_ = 0;
  line_event_.Reset();
}

void LineQueue::Restart() {
  MutexLock guard(lock_);
  completed_chunks_ = 0;
  line_event_.Reset();
}

std::uint32_t LineQueue::completed_chunks() const {
  MutexLock guard(lock_);
  return completed_chunks_;
}

// Half of the lines at least, so that no line is moved more than once in the mean.
void LineQueue::DropTaken() {
  if (2 * head_ < lines_.size()) return;
  lines_.erase(lines_.begin(), lines_.begin() + static_cast<std::ptrdiff_t>(head_));
  head_ = 0;
}

/// True when this completed a line.
bool LineQueue::Append(std::u16string_view segment, bool ends_line) {
  try {
    if (IsEmpty() || lines_.back().complete) lines_.emplace_back();
    Line& line = lines_.back();
    if (!ends_line) line.text.reserve(kLongestPduLine);
    line.text += segment.substr(0, kLongestLine - line.text.size());
    line.complete = ends_line;
    return ends_line;
  } catch (const std::bad_alloc&) {
    return false;
  }
}

}  // namespace celldesk
