// How a fuzzer reports a broken invariant.
#pragma once

#include <cstdio>
#include <cstdlib>

namespace quorvantis::fuzz {

/// Unless the condition holds, ends the run, which keeps the input.
inline void check(bool holds, const char* what) {
  if (holds) return;
  std::fprintf(stderr, "not so: %s\n", what);
  std::abort();
}

}  // namespace quorvantis::fuzz
