#include "bench/allocations.h"

#include <atomic>
#include <cstdlib>
#include <new>

namespace {

std::atomic<std::size_t> made, bytes;

}  // namespace

quorvantis::bench::Allocations quorvantis::bench::allocations() {
  return {made, bytes};
}

void* operator new(std::size_t size) {
  ++made;
  bytes += size;
  if (void* memory = std::malloc(size)) return memory;
  throw std::bad_alloc();
}

void operator delete(void* memory) noexcept {
  std::free(memory);
}

void operator delete(void* memory, std::size_t) noexcept {
  std::free(memory);
}
