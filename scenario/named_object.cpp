#include "scenario/named_object.h"

#include <algorithm>

#include "console/near_text.h"
#include "console/wording.h"
#include "json/read.h"
#include "json/write.h"

namespace quorvantis::scenario {

namespace {

/// Suggests a name, or lists all, for an unknown one.
std::string remedy(std::string_view name, const Names& known, const char* knownAre) {
  if (const auto near = console::nearestTo(name, known)) return "; did you mean " + json::write(*near) + "?";
  return knownAre + console::listed(known);
}

}  // namespace

json::Value readValue(std::string_view text) {
  auto read = json::read(text, {.refuseDuplicateKeys = true, .refuseWideIntegers = true});
  if (const auto* problem = std::get_if<json::Problem>(&read)) {
    throw StepError(problem->reason + " (byte " + std::to_string(problem->offset + 1) + ")");
  }
  return std::get<json::Value>(std::move(read));
}

json::Dictionary readObject(std::string_view text) {
  json::Value value = readValue(text);
  auto* object = value.get<json::Dictionary>();
  if (object == nullptr) throw StepError("a line must be one JSON object");
  return std::move(*object);
}

const std::string& nameUnder(std::string_view key, const json::Dictionary& object) {
  const auto entry = object.find(key);
  if (entry == object.end()) throw StepError("a step needs " + json::write(key));
  const auto* name = entry->second.get<std::string>();
  if (name == nullptr) throw StepError(json::write(key) + " must be a string");
  return *name;
}

StepError unknownName(const std::string& what, std::string_view name, const Names& known) {
  return StepError("unknown " + what + " " + json::write(name) + remedy(name, known, "; known are "));
}

void refuseOtherKeys(const json::Dictionary& object, const std::string& where, const Names& known) {
  const Names others(known.begin() + 1, known.end());
  for (const auto& [key, value] : object) {
    if (std::find(known.begin(), known.end(), key) != known.end()) continue;
    throw StepError(where + " has no key " + json::write(key) +
                    (others.empty() ? "; " + json::write(known.front()) + " is its only key"
                                    : remedy(key, others, "; its keys are ")));
  }
}

}  // namespace quorvantis::scenario
