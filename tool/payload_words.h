// The names of what reports on payloads speak of, in both their forms. Any thread.
#pragma once

#include "tool/payload_explanation.h"
#include "tool/payload_findings.h"

namespace quorvantis::tool {

const char* nameOf(Severity severity);
const char* nameOf(Arrival arrival);
const char* nameOf(device::ApplicationState state);
const char* nameOf(Outcome::When when);

}  // namespace quorvantis::tool
