// Real numbers from their text, whatever the locale. Any thread.
#pragma once

#include <optional>
#include <string_view>

namespace quorvantis::base {

/// The number that the whole text is, in decimal digits with or without a point and an exponent: infinite
/// when it is too large for a double, 0 when it is too small for one. Nothing for another text.
std::optional<double> realFrom(std::string_view text);

}  // namespace quorvantis::base
