// Looks for what is wrong with a payload, or surprising about it. Any thread.
#pragma once

#include "lint/document/document.h"
#include "lint/judges/finding.h"

namespace quorvantis::lint {

Findings findIn(const PayloadDocument& document);

}  // namespace quorvantis::lint
