// How much memory a task allocates, in a program that links allocations.cpp. Any thread; concurrent
// allocations of other threads count, too.
#pragma once

#include <cstddef>

namespace quorvantis::bench {

struct Allocations {
  std::size_t count = 0;
  std::size_t bytes = 0;
};

/// Since the start of the process.
Allocations allocations();

template <class Work>
Allocations allocationsOf(Work work) {
  const Allocations before = allocations();
  work();
  const Allocations after = allocations();
  return {after.count - before.count, after.bytes - before.bytes};
}

}  // namespace quorvantis::bench
