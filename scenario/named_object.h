// Reads the objects in scenarios: one key names what an object is, and the name determines which other keys
// it may have. Any thread.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "json/value.h"
#include "scenario/step.h"

namespace quorvantis::scenario {

using Names = std::vector<std::string_view>;

/// The value of a text, read as strictly as scenarios are. Throws StepError.
json::Value readValue(std::string_view text);

/// The same, when it is an object.
json::Dictionary readObject(std::string_view text);

/// The text under the key that names the object. Throws StepError.
const std::string& nameUnder(std::string_view key, const json::Dictionary& object);

/// The error for an unknown name of a step or an act.
StepError unknownName(const std::string& what, std::string_view name, const Names& known);

/// Throws StepError for an unknown key. The first of `known` names the object; `where` describes it in the
/// message.
void refuseOtherKeys(const json::Dictionary& object, const std::string& where, const Names& known);

}  // namespace quorvantis::scenario
