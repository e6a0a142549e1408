#include "support/memory/allocation_gate.h"

#include <cstdlib>
#include <new>

namespace {

thread_local bool counting = false;
thread_local bool refusing = false;
thread_local std::size_t allocations = 0;

void* Allocate(std::size_t size) {
  if (counting) ++allocations;
  void* memory = refusing ? nullptr : std::malloc(size == 0 ? 1 : size);
  if (memory == nullptr) throw std::bad_alloc();
  return memory;
}

}  // namespace

// The program's own allocation functions, for every test of this program.
void* operator new(std::size_t size) { return Allocate(size); }
void* operator new[](std::size_t size) { return Allocate(size); }
void operator delete(void* memory) noexcept { std::free(memory); }
void operator delete[](void* memory) noexcept { std::free(memory); }
void operator delete(void* memory, std::size_t) noexcept { std::free(memory); }
void operator delete[](void* memory, std::size_t) noexcept { std::free(memory); }

namespace celldesk {

AllocationGate::AllocationGate() {
  allocations = 0;
  counting = true;
}

AllocationGate::~AllocationGate() { counting = refusing = false; }

std::size_t AllocationGate::count() const { return allocations; }

void AllocationGate::Refuse() { refusing = true; }

}  // namespace celldesk
