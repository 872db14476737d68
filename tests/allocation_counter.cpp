#include "allocation_counter.h"

#include <atomic>
#include <cstdlib>
#include <new>

namespace {
std::atomic<std::size_t> allocations = 0;

void* TryAllocate(std::size_t size) {
  allocations.fetch_add(1, std::memory_order_relaxed);
  return std::malloc(size == 0 ? 1 : size);
}

void* Allocate(std::size_t size) {
  if (void* memory = TryAllocate(size)) return memory;
  throw std::bad_alloc();
}
}  // namespace

std::size_t AllocationCount() { return allocations; }

void* operator new(std::size_t size) { return Allocate(size); }
void* operator new[](std::size_t size) { return Allocate(size); }
void* operator new(std::size_t size, const std::nothrow_t&) noexcept { return TryAllocate(size); }
void* operator new[](std::size_t size, const std::nothrow_t&) noexcept { return TryAllocate(size); }
void operator delete(void* memory) noexcept { std::free(memory); }
void operator delete[](void* memory) noexcept { std::free(memory); }
void operator delete(void* memory, std::size_t) noexcept { std::free(memory); }
void operator delete[](void* memory, std::size_t) noexcept { std::free(memory); }
