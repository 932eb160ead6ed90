// The table of steps: one row for each step, or for each of its variants, which says what the step holds and
// what it does. What reads and plays steps, what offers them and what documents them all go by it. Any
// thread.
#pragma once

#include <vector>

#include "scenario/step_row.h"

namespace quorvantis::scenario {

/// In the order of the documents; the variants of a step follow each other.
const std::vector<StepRow>& stepTable();

/// All that is stored on the device, the system's own keys left out, as the step "show" tells it.
json::Dictionary storedValues(device::Device& device);

}  // namespace quorvantis::scenario
