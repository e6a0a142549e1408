#pragma once

#include <cstddef>

namespace celldesk {

/// Counts the allocations of this test program from here to the end of its life, and refuses those beyond
/// `allowed` with std::bad_alloc. One at a time.
class CountedMemory {
 public:
  explicit CountedMemory(std::size_t allowed = 1'000'000);
  ~CountedMemory();
  CountedMemory(const CountedMemory&) = delete;
  CountedMemory& operator=(const CountedMemory&) = delete;

  std::size_t count() const;
};

}  // namespace celldesk
