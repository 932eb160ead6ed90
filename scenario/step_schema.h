// What each step of a scenario may hold. Any thread.
#pragma once

#include <string>

#include "json/value.h"

namespace quorvantis::scenario {

/// What is wrong with the step; empty when it is well-formed.
std::string problemOf(const json::Dictionary& step, bool serverIsElsewhere);

}  // namespace quorvantis::scenario
