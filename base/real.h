// Parses real numbers, whatever the locale. Any thread.
#pragma once

#include <optional>
#include <string_view>

namespace quorvantis::base {

/// The number that the text consists of, in decimal digits with or without a point and an exponent: infinite
/// when it is too large for a double, 0 when it is too small for one. Nothing for other texts.
std::optional<double> realFrom(std::string_view text);

}  // namespace quorvantis::base
