// What the operating system does to the application on the simulated device, where it takes an object to do
// it. Main thread.
#pragma once

#include <string>

#include "json/value.h"
#include "platform/NSDictionary.h"

namespace quorvantis::platform::simulated {

/// A notification arrives while the application is in front: the center's delegate, if any, is told.
void deliverInForeground(const NSDictionary& userInfo);

/// The user answers a notification: the center's delegate, if any, is told.
void deliverResponse(const NSDictionary& userInfo);

}  // namespace quorvantis::platform::simulated
