// The names of what reports on payloads speak of, in both their forms. Any thread.
#pragma once

#include "lint/explanation.h"
#include "lint/findings.h"
#include "scenario/names.h"

namespace quorvantis::lint {

/// Of the two methods that a payload may reach, the one for those that wake the application.
inline constexpr const char* kSecondCall = "application:didReceiveRemoteNotification:fetchCompletionHandler:";

using scenario::nameOf;
const char* nameOf(Severity severity);
const char* nameOf(Outcome::When when);

}  // namespace quorvantis::lint
