// Suggests a known name for a misspelt one. Any thread.
#pragma once

#include <optional>
#include <span>
#include <string_view>

namespace quorvantis::console {

/// The first of `known` that differs from `text` only in case, blanks, "-" and "_", or else in one letter
/// that is different, missing, extra or swapped with its neighbour, or, in long names, in two. Nothing when
/// there is none, or when `text` is one of them.
std::optional<std::string_view> nearestTo(std::string_view text, std::span<const std::string_view> known);

}  // namespace quorvantis::console
