#include "pdu/counted_memory.h"

#include <cstdint>
#include <cstdlib>
#include <new>

namespace {

std::size_t g_allocations = 0;
std::size_t g_allowed = SIZE_MAX;

}  // namespace

void* operator new(std::size_t size) {
  if (g_allocations >= g_allowed) throw std::bad_alloc();
  ++g_allocations;
  void* memory = std::malloc(size);
  if (memory == nullptr) throw std::bad_alloc();
  return memory;
}

void operator delete(void* memory) noexcept { std::free(memory); }
void operator delete(void* memory, std::size_t) noexcept { std::free(memory); }

namespace celldesk {

CountedMemory::CountedMemory(std::size_t allowed) {
  g_allocations = 0;
  g_allowed = allowed;
}

CountedMemory::~CountedMemory() { g_allowed = SIZE_MAX; }

std::size_t CountedMemory::count() const { return g_allocations; }

}  // namespace celldesk
