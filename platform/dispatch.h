// Work for the main queue. Called from any thread; the tasks run, and are destroyed, on the main thread, in
// order.
#pragma once

#include <cstdint>
#include <functional>

#include "platform/export.h"

namespace quorvantis::platform {

/// dispatch_async on the main queue. Never runs the task before it returns.
QUORVANTIS_PUSH_API void dispatch_async_main(std::function<void()> task);

/// dispatch_after on the main queue, `delta` nanoseconds from now.
QUORVANTIS_PUSH_API void dispatch_after_main(std::int64_t delta, std::function<void()> task);

}  // namespace quorvantis::platform
