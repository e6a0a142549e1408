#pragma once

#include <cstddef>
#include <functional>
#include <string>

namespace celldesk::bench {

/// Allocations that this thread asked operator new for, since its start.
std::size_t AllocationCount();

/// Bytes in use on the heap of the whole process, the allocator's own headers counted.
std::size_t HeapInUse();

/// Where large records find their room: in memory that the system gives for the first time, whose pages cost
/// a fault each, or in memory that the process used before. It holds until the next call.
enum class Room { kNew, kUsed };
void SetRoom(Room room);
/// What the name of a figure says of it.
std::string NameOf(Room room);
/// Gives what is free back to the system where new memory is wanted.
void MakeRoom();

/// By how many bytes the process grew at most while `work` ran.
std::size_t PeakGrowth(const std::function<void()>& work);

}  // namespace celldesk::bench
