// Draws an alert as it looks on a phone, in box characters. Any thread.
#pragma once

#include <string>
#include <vector>

namespace quorvantis::console {

/// The lines of the drawing, at most `width` columns wide. Empty texts take no line; line feeds break one.
std::vector<std::string> alertBox(const std::string& title, const std::string& message,
                                  const std::vector<std::string>& buttons, std::size_t width);

}  // namespace quorvantis::console
