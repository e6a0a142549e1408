#include "memory.h"

#include <malloc.h>

#include <algorithm>
#include <cstdlib>
#include <fstream>
#include <new>
#include <string>

namespace {

thread_local std::size_t allocation_count = 0;

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

std::size_t PeakGrowth(const std::function<void()>& work) {
  malloc_trim(0);
  std::ofstream("/proc/self/clear_refs") << "5";  // the peak is the present size again
  const std::size_t before = ReadStatus("VmRSS:");
  work();
  return ReadStatus("VmHWM:") - before;
}

}  // namespace celldesk::bench
