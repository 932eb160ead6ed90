// Apple's own keys of "aps" and of "alert", with the kinds and values that Apple documents. Those that the
// library reads too are not judged here. Any thread.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "json/value.h"

namespace quorvantis::lint {

/// The dictionaries whose keys Apple defines.
enum class Place {
  aps,
  alert,
  sound,
  liveActivity,         ///< "aps" of a Live Activity
  alertOfLiveActivity,  ///< its "alert"
  textOfLiveActivity    ///< the "title" and the "body" of that
};

/// What the key's value must be, such as "must be a string"; empty when it is that, or the key is none of
/// these. `meant`: the documented value that a misspelt one stands for, if there is one.
struct SystemValueProblem {
  std::string must;
  json::Value meant;
};
SystemValueProblem problemOfSystemValue(Place place, std::string_view key, const json::Value& value);

/// The names of its keys. In "aps" those that a Live Activity alone has are left out: such words are an
/// application's own more often.
std::vector<std::string_view> systemKeys(Place place);

}  // namespace quorvantis::lint
