// Finds its way in text that is well-formed JSON. Any thread.
#pragma once

#include <cstddef>
#include <string_view>

namespace quorvantis::lint {

inline constexpr std::string_view kBlanks = " \t\r\n";

/// The first byte from `offset` on that is no white space.
std::size_t skipBlanks(std::string_view text, std::size_t offset);

/// Behind the value that begins at `offset`.
std::size_t endOfValue(std::string_view text, std::size_t offset);

}  // namespace quorvantis::lint
