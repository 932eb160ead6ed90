// The signals that stop a command that serves. To be called on the main thread, before it starts others.
#pragma once

#include <pthread.h>

#include <csignal>

namespace quorvantis::console {

/// Blocks them in this thread and in those that it starts; wait for one with sigwait().
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
