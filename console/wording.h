// Formats values and numbers for messages. Any thread.
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

/// The texts, separated by commas, the last one by `beforeLast`, such as " or ".
std::string joined(std::span<const std::string> texts, std::string_view beforeLast = ", ");

/// The same with each in quotation marks.
std::string listed(std::span<const std::string_view> texts, std::string_view beforeLast = ", ");

/// The text, shortened with an ellipsis when it has more bytes than that.
std::string shortened(std::string_view text, std::size_t longest = 120);

/// The text, safe for terminals: control characters, including bidirectional ones, and bytes that are not
/// UTF-8 become U+FFFD. Line feeds are kept.
std::string printable(std::string_view text);

}  // namespace quorvantis::console
