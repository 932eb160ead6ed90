// How the phone's system interprets strings: as versions, numbers, addresses. Any thread.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace quorvantis::device {

/// Below 0, 0, or above 0, runs of digits compared as numbers, however long.
int compareNumerically(std::string_view a, std::string_view b);

/// The integer that the text begins with, after white space, clamped to 64 bits; 0 when there is none.
std::int64_t integerValue(std::string_view text);

/// Truncated, and clamped to 64 bits.
std::int64_t integerValue(double real);

/// The URL for this text, or nothing when it is not a URL. A URI reference (RFC 3986) is not empty and
/// consists of reserved and unreserved characters and "%"; from system version 17.0 on, others are
/// percent-encoded first.
std::optional<std::string> urlFrom(std::string_view text, std::string_view systemVersion);

}  // namespace quorvantis::device
