#pragma once

#include <cstddef>
#include <functional>

namespace celldesk::bench {

/// Allocations that this thread asked operator new for, since its start.
std::size_t AllocationCount();

/// Bytes in use on the heap of the whole process, the allocator's own headers counted.
std::size_t HeapInUse();

/// By how many bytes the process grew at most while `work` ran.
std::size_t PeakGrowth(const std::function<void()>& work);

}  // namespace celldesk::bench
