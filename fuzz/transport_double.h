// Replaces the device's transport in programs that link it: requests end at once, without a network. Main
// thread.
#pragma once

#include <optional>
#include <string>

namespace quorvantis::fuzz {

/// The answer to every request from now on; nothing, the default: requests fail.
void answerRequestsWith(std::optional<std::string> body);

}  // namespace quorvantis::fuzz
