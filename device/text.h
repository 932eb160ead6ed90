// How the phone's system reads texts: as versions, numbers, addresses. Any thread.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace quorvantis::device {

/// Below 0, 0, or above 0, runs of digits compared as numbers, however long.
int compareNumerically(std::string_view a, std::string_view b);

/// The whole number that a text begins with, after white space; 0 when there is none; the nearest 64-bit one.
std::int64_t integerValue(std::string_view text);

/// Without its fraction; the nearest 64-bit one.
std::int64_t integerValue(double real);

/// The text of the URL that a text is, or nothing when it is none. A URI reference (RFC 3986) is not empty
/// and holds reserved and unreserved characters and "%"; from system version 17.0 on, others are
/// percent-encoded first.
std::optional<std::string> urlFrom(std::string_view text, std::string_view systemVersion);

}  // namespace quorvantis::device
