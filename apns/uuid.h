// Universally unique identifiers in their 8-4-4-4-12 form (RFC 4122). Any thread.
#pragma once

#include <string>
#include <string_view>

namespace quorvantis::apns {

/// Upper and lower case are accepted.
bool isUuid(std::string_view text);

/// A random one (version 4), in capitals as Apple's service writes them.
std::string makeUuid();

}  // namespace quorvantis::apns
