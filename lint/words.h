// The names of what reports on payloads speak of, in both their forms. Any thread.
#pragma once

#include "lint/explanation.h"
#include "lint/findings.h"

namespace quorvantis::lint {

const char* nameOf(Severity severity);
const char* nameOf(scenario::Arrival arrival);
const char* nameOf(device::ApplicationState state);
const char* nameOf(Outcome::When when);

}  // namespace quorvantis::lint
