// A class of the platform's runtime, by name: used to look up a bundle, and as the lock of `shared`.
// A plain value, usable from any thread.
#pragma once

#include "platform/export.h"

namespace quorvantis::platform {

struct Class {
  const char* name;  ///< Static.
};

/// Enters the runtime's recursive lock of the class object (objc_sync_enter). Any thread.
QUORVANTIS_PUSH_API void objc_sync_enter(Class object);

/// Leaves it; called by the thread that entered.
QUORVANTIS_PUSH_API void objc_sync_exit(Class object);

}  // namespace quorvantis::platform
