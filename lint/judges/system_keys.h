// Apple's own keys of "aps" and of "alert", with the kinds and values that Apple documents. Those that the
// library reads too are not judged here. Any thread.
#pragma once

#include <span>
#include <string>
#include <string_view>

#include "json/value.h"

namespace quorvantis::lint {

enum class Place { aps, alert };

/// What the key's value must be, such as "must be a string"; empty when it is that, or the key is none of
/// these. `meant`: the documented value that a misspelt one stands for, if there is one.
struct SystemValueProblem {
  std::string must;
  json::Value meant;
};
SystemValueProblem problemOfSystemValue(Place place, std::string_view key, const json::Value& value);

/// Their names, those aside that a notification for Live Activities alone has: such words are an
/// application's own more often.
std::span<const std::string_view> systemKeys(Place place);

}  // namespace quorvantis::lint
