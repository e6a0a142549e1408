#pragma once

#include <cstddef>

namespace celldesk {

/// Counts the allocations of the calling thread, and can let them fail, for the life of the object. One at a
/// time.
class AllocationGate {
 public:
  AllocationGate();
  ~AllocationGate();
  AllocationGate(const AllocationGate&) = delete;
  AllocationGate& operator=(const AllocationGate&) = delete;

  std::size_t count() const;
  /// The most bytes that were held at once, beyond what was held when the object was made.
  std::size_t peak() const;
  /// From now on every allocation throws std::bad_alloc.
  void Refuse();
};

}  // namespace celldesk
