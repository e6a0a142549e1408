#pragma once

#include <cstddef>

namespace celldesk {

/// Watches how much memory of this test program is allocated at once, beyond what was when the object was
/// made. One at a time.
class PeakMemory {
 public:
  PeakMemory();
  /// The highest number of bytes so far.
  std::size_t bytes() const;
};

}  // namespace celldesk
