// The operating system's calls to the application on the simulated device that pass an object. Main thread.
#pragma once

#include "platform/NSDictionary.h"

namespace quorvantis::platform::simulated {

/// A notification arrives while the application is in the foreground: calls the center's delegate, if any.
void deliverInForeground(const NSDictionary& userInfo);

/// The user responds to a notification: calls the center's delegate, if any.
void deliverResponse(const NSDictionary& userInfo);

}  // namespace quorvantis::platform::simulated
