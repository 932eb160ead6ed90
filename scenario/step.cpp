#include "scenario/step.h"

#include <algorithm>

#include "console/near_text.h"
#include "console/wording.h"
#include "json/read.h"
#include "json/write.h"
#include "scenario/step_table.h"

namespace quorvantis::scenario {

namespace {

using Names = std::vector<std::string_view>;

/// Says what could be written in place of a name that is none of these.
std::string remedy(std::string_view name, const Names& known, const char* knownAre) {
  if (const auto near = console::nearestTo(name, known)) return "; do you mean " + json::write(*near) + "?";
  return knownAre + console::listed(known);
}

const std::string& nameOf(const json::Dictionary& step) {
  const auto entry = step.find("do");
  if (entry == step.end()) throw StepError(R"(a step needs "do")");
  const auto* name = entry->second.get<std::string>();
  if (name == nullptr) throw StepError(R"("do" must be a string)");
  return *name;
}

/// The rows of the step's name: one, or one for each of its variants.
std::vector<const StepRow*> rowsOf(const std::string& name) {
  std::vector<const StepRow*> rows;
  Names known;
  for (const StepRow& row : stepTable()) {
    if (row.name == name) rows.push_back(&row);
    if (known.empty() || known.back() != row.name) known.emplace_back(row.name);
  }
  if (rows.empty())
    throw StepError("unknown step " + json::write(name) + remedy(name, known, "; there are "));
  return rows;
}

const StepRow& rowOf(const json::Dictionary& step) {
  const std::vector<const StepRow*> rows = rowsOf(nameOf(step));
  const auto& variant = rows.front()->variant;
  if (!variant) return *rows.front();
  const auto entry = step.find(variant->key);
  if (entry == step.end())
    throw StepError(json::write(rows.front()->name) + " needs " + json::write(variant->key));
  std::vector<const char*> choices;
  for (const StepRow* row : rows) {
    if (entry->second == json::Value(row->variant->value)) return *row;
    choices.push_back(row->variant->value);
  }
  throw StepError(json::write(variant->key) + " must be " + alternatives(choices));
}

void refuseOtherKeys(const json::Dictionary& step, const StepRow& row) {
  Names known;
  if (row.variant) known.push_back(row.variant->key);
  for (const KeyFacts& key : row.keys()) known.push_back(key.name);
  for (const auto& [key, value] : step) {
    if (key == "do" || std::find(known.begin(), known.end(), key) != known.end()) continue;
    std::string where = json::write(row.name);
    if (row.variant) where += " with " + json::write(row.variant->value);
    throw StepError(where + " has no key " + json::write(key) +
                    (known.empty() ? R"(; "do" is all that it has)" : remedy(key, known, "; it has ")));
  }
}

}  // namespace

std::string Step::text() const {
  return json::write(keys_);
}

const std::string& Step::name() const {
  return nameOf(keys_);
}

const json::Value* Step::find(std::string_view key) const {
  const auto entry = keys_.find(key);
  return entry == keys_.end() ? nullptr : &entry->second;
}

Step readStep(std::string_view text, bool serverIsElsewhere, std::size_t line) {
  auto read = json::read(text, {.refuseDuplicateKeys = true, .refuseWideIntegers = true});
  if (const auto* problem = std::get_if<json::Problem>(&read)) {
    throw StepError(problem->reason + " (byte " + std::to_string(problem->offset + 1) + ")");
  }
  auto* keys = std::get<json::Value>(read).get<json::Dictionary>();
  if (keys == nullptr) throw StepError("a line must be one JSON object");
  return readStep(std::move(*keys), serverIsElsewhere, line);
}

Step readStep(json::Dictionary keys, bool serverIsElsewhere, std::size_t line) {
  const StepRow& row = rowOf(keys);
  if (row.tellsPushService && serverIsElsewhere) throw StepError(kServerIsElsewhere);
  refuseOtherKeys(keys, row);
  Step step;
  for (const Rule& rule : row.rules) step.plays_.push_back(rule.bind(keys));
  step.line_ = line;
  step.keys_ = std::move(keys);
  return step;
}

}  // namespace quorvantis::scenario
