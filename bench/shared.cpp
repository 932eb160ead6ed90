// The shared object once it is made.
#include <mutex>

#include "bench/pairs.h"
#include "bench/phone.h"

namespace quorvantis::bench {

void registerShared() {
  const std::string row = "`shared` once made";
  measure(row, "library", [] { benchmark::DoNotOptimize(&Push::shared()); });
  measure(row, "recursive mutex", [] {
    static std::recursive_mutex mutex;
    mutex.lock();
    benchmark::ClobberMemory();
    mutex.unlock();
  });
  measure(row, "function-local static", [] {
    static const std::string made(64, 'x');
    benchmark::DoNotOptimize(made.data());
  });
}

}  // namespace quorvantis::bench
