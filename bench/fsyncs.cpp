#include "bench/fsyncs.h"

#include <sys/syscall.h>
#include <unistd.h>

#include <atomic>

namespace {

std::atomic<int> calls;

}  // namespace

int quorvantis::bench::fsyncs() {
  return calls;
}

// The program's own definitions come before the C library's, for SQLite too.
extern "C" __attribute__((visibility("default"))) int fsync(int descriptor) {
  ++calls;
  return static_cast<int>(::syscall(SYS_fsync, descriptor));
}

extern "C" __attribute__((visibility("default"))) int fdatasync(int descriptor) {
  ++calls;
  return static_cast<int>(::syscall(SYS_fdatasync, descriptor));
}
