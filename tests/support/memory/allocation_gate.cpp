#include "support/memory/allocation_gate.h"

#include <malloc.h>

#include <algorithm>
#include <cstddef>
#include <cstdlib>
#include <new>

namespace {

thread_local bool counting = false;
thread_local bool refusing = false;
thread_local std::size_t allocations = 0;
thread_local std::ptrdiff_t held = 0;
thread_local std::ptrdiff_t highest = 0;

void Count(void* memory, int sign) {
  if (!counting) return;
  held += sign * static_cast<std::ptrdiff_t>(::malloc_usable_size(memory));
  highest = std::max(highest, held);
}

void* Allocate(std::size_t size) {
  if (counting) ++allocations;
  void* memory = refusing ? nullptr : std::malloc(size == 0 ? 1 : size);
  if (memory == nullptr) throw std::bad_alloc();
  Count(memory, 1);
  return memory;
}

void Free(void* memory) {
  Count(memory, -1);
  std::free(memory);
}

}  // namespace

// The program's own allocation functions, for every test of this program.
void* operator new(std::size_t size) { return Allocate(size); }
void* operator new[](std::size_t size) { return Allocate(size); }
void operator delete(void* memory) noexcept { Free(memory); }
void operator delete[](void* memory) noexcept { Free(memory); }
void operator delete(void* memory, std::size_t) noexcept { Free(memory); }
void operator delete[](void* memory, std::size_t) noexcept { Free(memory); }

namespace celldesk {

AllocationGate::AllocationGate() {
  allocations = 0;
  held = highest = 0;
  counting = true;
}

AllocationGate::~AllocationGate() { counting = refusing = false; }

std::size_t AllocationGate::count() const { return allocations; }

std::size_t AllocationGate::peak() const { return static_cast<std::size_t>(highest); }

void AllocationGate::Refuse() { refusing = true; }

}  // namespace celldesk
