// Finds the known text that a misspelt one stands for. Any thread.
#pragma once

#include <optional>
#include <span>
#include <string_view>

namespace quorvantis::console {

/// The first of `known` that differs from `text` only in case, blanks, "-" and "_", or else in one letter
/// that is another, missing or too many. Nothing when there is none, or when `text` is itself among them.
std::optional<std::string_view> nearestTo(std::string_view text, std::span<const std::string_view> known);

}  // namespace quorvantis::console
