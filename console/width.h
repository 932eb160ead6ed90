// How many columns of a terminal a character takes. Any thread.
#pragma once

#include <cstddef>

namespace quorvantis::console {

/// 0 for what joins the character before it, 2 for what East Asian scripts and most emoji take, else 1.
std::size_t widthOf(char32_t character);

}  // namespace quorvantis::console
