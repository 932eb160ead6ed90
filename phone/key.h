// The key that whoever uses a phone over HTTP must show. Any thread.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace quorvantis::phone {

/// A new one: 192 random bits as letters, digits, "-" and "_".
std::string newKey();

/// The key of this user for the phone at a port, so that a page stays usable when the phone is started again
/// there: kept in the user's state folder ($XDG_STATE_HOME, else ~/.local/state), readable to that user
/// alone. A new one each time where nothing can be kept.
std::string keyFor(std::uint16_t port);

/// Whether the two are the same, found in a time that tells nothing of either.
bool isSameKey(std::string_view a, std::string_view b);

}  // namespace quorvantis::phone
