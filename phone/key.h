// The key that every user of a phone's HTTP interface must present. Any thread.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace quorvantis::phone {

/// A new one: 192 random bits as letters, digits, "-" and "_".
std::string newKey();

/// The user's key for a phone on this port, so that an open page reconnects when the phone is restarted: kept
/// in the user's state folder ($XDG_STATE_HOME, else ~/.local/state), readable only by that user. A new one
/// each time where nothing can be kept.
std::string keyFor(std::uint16_t port);

/// Compares in constant time.
bool isSameKey(std::string_view a, std::string_view b);

}  // namespace quorvantis::phone
