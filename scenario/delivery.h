// What the system does with a remote notification that reaches the phone while the application runs. Any
// thread.
#pragma once

#include <vector>

#include "device/device.h"
#include "scenario/host.h"

namespace quorvantis::scenario {

/// How the notification comes to an application in this state, in order: as one in the foreground, unless the
/// application is in the background, and then as a background notification, if the payload asks for that.
/// Each is a separate delivery. None: the application is not called before the user taps it.
std::vector<Arrival> arrivalsOf(const json::Dictionary& userInfo, device::ApplicationState state);

}  // namespace quorvantis::scenario
