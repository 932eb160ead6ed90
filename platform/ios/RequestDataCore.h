// The registration client's core behind its Objective-C object. Threads: as PushRequestData's.
#pragma once

#import <QuorvantisPush/PushRequestData.h>

#include "registration/PushRequestData.h"

namespace quorvantis::platform::ios {

/// A new, initialised Objective-C object, by its core.
Ref<quorvantis::PushRequestData> makeRequestData();

}  // namespace quorvantis::platform::ios
