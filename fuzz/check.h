// How a fuzzer says that something is not as it must be.
#pragma once

#include <cstdio>
#include <cstdlib>

namespace quorvantis::fuzz {

/// Ends the run, which keeps the input, unless it holds.
inline void check(bool holds, const char* what) {
  if (holds) return;
  std::fprintf(stderr, "not so: %s\n", what);
  std::abort();
}

}  // namespace quorvantis::fuzz
