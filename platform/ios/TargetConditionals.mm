#include "platform/TargetConditionals.h"

#include <TargetConditionals.h>

namespace quorvantis::platform {

bool targetIsSimulator() { return TARGET_OS_SIMULATOR != 0; }

}  // namespace quorvantis::platform
