// The names of what reports on payloads speak of, in both their forms. Any thread.
#pragma once

#include "lint/explanation.h"
#include "lint/findings.h"
#include "scenario/names.h"

namespace quorvantis::lint {

using scenario::nameOf;
const char* nameOf(Severity severity);
const char* nameOf(Outcome::When when);

}  // namespace quorvantis::lint
