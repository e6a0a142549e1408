#include "platform/vdir/peak_memory.h"

#include <malloc.h>

#include <algorithm>
#include <cstdlib>
#include <new>

namespace {

std::size_t g_present = 0;
std::size_t g_start = 0;
std::size_t g_highest = 0;

void Free(void* memory) {
  g_present -= ::malloc_usable_size(memory);
  std::free(memory);
}

}  // namespace

void* operator new(std::size_t size) {
  void* memory = std::malloc(size);
  if (memory == nullptr) throw std::bad_alloc();
  g_present += ::malloc_usable_size(memory);
  g_highest = std::max(g_highest, g_present);
  return memory;
}

void operator delete(void* memory) noexcept { Free(memory); }
void operator delete(void* memory, std::size_t) noexcept { Free(memory); }

namespace celldesk {

PeakMemory::PeakMemory() { g_start = g_highest = g_present; }

std::size_t PeakMemory::bytes() const { return g_highest - g_start; }

}  // namespace celldesk
