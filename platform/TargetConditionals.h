// Which of the two builds this is: for devices or for the simulator. Any thread.
#pragma once

#include "platform/export.h"

namespace quorvantis::platform {

/// TARGET_OS_SIMULATOR, a macro on the platform.
QUORVANTIS_PUSH_API bool targetIsSimulator();

}  // namespace quorvantis::platform
