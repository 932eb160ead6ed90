// Scans well-formed JSON text. Any thread.
#pragma once

#include <cstddef>
#include <string_view>

namespace quorvantis::lint {

inline constexpr std::string_view kBlanks = " \t\r\n";

/// The first byte from `offset` on that is not white space.
std::size_t skipBlanks(std::string_view text, std::size_t offset);

/// The end of the value that begins at `offset`.
std::size_t endOfValue(std::string_view text, std::size_t offset);

}  // namespace quorvantis::lint
