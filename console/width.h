// How many columns of a terminal a character takes. Any thread.
#pragma once

#include <cstddef>

namespace quorvantis::console {

/// 0 for combining characters, 2 for wide East Asian characters and most emoji, else 1.
std::size_t widthOf(char32_t character);

}  // namespace quorvantis::console
