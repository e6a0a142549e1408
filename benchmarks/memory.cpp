#include "memory.h"

#include <malloc.h>

#include <algorithm>
#include <cstdlib>
#include <fstream>
#include <limits>
#include <new>
#include <string>

namespace {

thread_local std::size_t allocation_count = 0;
celldesk::bench::Room wanted_room = celldesk::bench::Room::kNew;

void* Allocate(std::size_t size) {
  ++allocation_count;
  void* const memory = std::malloc(std::max<std::size_t>(size, 1));
  if (memory == nullptr) throw std::bad_alloc();
  return memory;
}

/// A line of /proc/self/status, in bytes.
std::size_t ReadStatus(const std::string& name) {
  std::ifstream status("/proc/self/status");
  std::string word;
  std::size_t kilobytes = 0;
  while (status >> word && word != name) {
  }
  status >> kilobytes;
  return kilobytes * 1024;
}

}  // namespace

void* operator new(std::size_t size) { return Allocate(size); }
void* operator new[](std::size_t size) { return Allocate(size); }
void operator delete(void* memory) noexcept { std::free(memory); }
void operator delete[](void* memory) noexcept { std::free(memory); }
void operator delete(void* memory, std::size_t) noexcept { std::free(memory); }
void operator delete[](void* memory, std::size_t) noexcept { std::free(memory); }

namespace celldesk::bench {

std::size_t AllocationCount() { return allocation_count; }

std::size_t HeapInUse() {
  const struct mallinfo2 facts = mallinfo2();
  return facts.uordblks + facts.hblkhd;
}

void SetRoom(Room room) {
  wanted_room = room;
  // The values are the allocator's own, as long as it did not adapt them, or such that it keeps everything.
  const bool keep = room == Room::kUsed;
  mallopt(M_MMAP_MAX, keep ? 0 : 65536);
  mallopt(M_MMAP_THRESHOLD, 128 * 1024);
  mallopt(M_TRIM_THRESHOLD, keep ? std::numeric_limits<int>::max() : 128 * 1024);
}

std::string NameOf(Room room) { return room == Room::kNew ? ", new memory" : ""; }

void MakeRoom() {
  if (wanted_room == Room::kNew) malloc_trim(0);
}

std::size_t PeakGrowth(const std::function<void()>& work) {
  malloc_trim(0);
  std::ofstream("/proc/self/clear_refs") << "5";  // the peak is the present size again
  const std::size_t before = ReadStatus("VmRSS:");
  work();
  return ReadStatus("VmHWM:") - before;
}

}  // namespace celldesk::bench
