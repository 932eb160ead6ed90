// Stands in for the device's transport where it is linked in: requests end at once, without a network. Main
// thread.
#pragma once

#include <optional>
#include <string>

namespace quorvantis::fuzz {

/// What every request gets from now on; nothing, as at first: it fails.
void answerRequestsWith(std::optional<std::string> body);

}  // namespace quorvantis::fuzz
