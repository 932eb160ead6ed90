// The signals by which a person or a system ends a command that serves. Main thread, before it starts others.
#pragma once

#include <pthread.h>

#include <csignal>

namespace quorvantis::console {

/// Blocks them in this thread and in all that it starts; sigwait() then tells of one.
inline sigset_t blockStopSignals() {
  sigset_t stop;
  sigemptyset(&stop);
  sigaddset(&stop, SIGINT);
  sigaddset(&stop, SIGTERM);
  sigaddset(&stop, SIGHUP);
  pthread_sigmask(SIG_BLOCK, &stop, nullptr);
  return stop;
}

}  // namespace quorvantis::console
