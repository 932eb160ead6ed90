// Values and numbers in the words and forms of messages to people. Any thread.
#pragma once

#include <cstddef>
#include <span>
#include <string>
#include <string_view>

#include "json/value.h"

namespace quorvantis::console {

/// "a string", "an array", "null" and so on.
std::string kindOf(const json::Value& value);

/// A number's digits in groups: 4,096.
std::string grouped(std::size_t number);

/// "1 error", "2 errors".
std::string counted(std::size_t number, const std::string& noun);

/// Texts in quotation marks, with commas between them.
std::string listed(std::span<const std::string_view> texts);

/// The text, cut with an ellipsis when it has more bytes than that.
std::string shortened(std::string_view text, std::size_t longest = 120);

/// The text without what a terminal would act on: control characters, those of bidirectional text too, and
/// bytes that are no UTF-8 become U+FFFD. Line feeds stay.
std::string printable(std::string_view text);

}  // namespace quorvantis::console
