// Creates registration clients of the exported class. Threads: as PushRequestData.
#pragma once

#include "registration/PushRequestData.h"

namespace quorvantis::framework {

/// The core of a new, initialised Objective-C object.
platform::Ref<PushRequestData> makeRequestData();

}  // namespace quorvantis::framework
