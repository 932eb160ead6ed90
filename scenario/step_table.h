// The table of steps: a row for each step, or for each of its variants, with its keys and what it does. The
// reader, the player, the page's forms and the documentation all use it. Any thread.
#pragma once

#include <vector>

#include "scenario/step_row.h"

namespace quorvantis::scenario {

/// In the order of the documents; the variants of a step follow each other.
const std::vector<StepRow>& stepTable();

/// Everything stored on the device, without the system's own keys, as the step "show" prints it.
json::Dictionary storedValues(device::Device& device);

}  // namespace quorvantis::scenario
