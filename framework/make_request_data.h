// Makes registration clients as the exported class has them. Threads: as PushRequestData's.
#pragma once

#include "registration/PushRequestData.h"

namespace quorvantis::framework {

/// A new, initialised Objective-C object, by its core.
platform::Ref<PushRequestData> makeRequestData();

}  // namespace quorvantis::framework
