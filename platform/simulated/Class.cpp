#include "platform/Class.h"

#include <cstddef>
#include <mutex>
#include <new>

namespace quorvantis::platform {

namespace {

/// One lock serves every class: only one class is ever locked. It is never destroyed: threads may outlive
/// main().
std::recursive_mutex& classLock() {
  alignas(std::recursive_mutex) static std::byte place[sizeof(std::recursive_mutex)];
  static std::recursive_mutex& lock = *new (place) std::recursive_mutex;
  return lock;
}

}  // namespace

void objc_sync_enter(Class /*object*/) {
  classLock().lock();
}

void objc_sync_exit(Class /*object*/) {
  classLock().unlock();
}

}  // namespace quorvantis::platform
