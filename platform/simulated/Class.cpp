#include "platform/Class.h"

#include <mutex>
#include <type_traits>

namespace quorvantis::platform {

namespace {

// One lock serves every class: only one class is ever locked.
constinit std::recursive_mutex classLock;
// Threads may outlive main().
static_assert(std::is_trivially_destructible_v<std::recursive_mutex>);

}  // namespace

void objc_sync_enter(Class /*object*/) {
  classLock.lock();
}

void objc_sync_exit(Class /*object*/) {
  classLock.unlock();
}

}  // namespace quorvantis::platform
