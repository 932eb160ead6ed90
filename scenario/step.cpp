#include "scenario/step.h"

#include "console/wording.h"
#include "json/write.h"
#include "scenario/named_object.h"
#include "scenario/step_table.h"

namespace quorvantis::scenario {

namespace {

/// The rows of the step's name: one, or one for each of its variants.
std::vector<const StepRow*> rowsOf(const std::string& name) {
  std::vector<const StepRow*> rows;
  Names known;
  for (const StepRow& row : stepTable()) {
    if (row.name == name) rows.push_back(&row);
    if (known.empty() || known.back() != row.name) known.emplace_back(row.name);
  }
  if (rows.empty()) throw unknownName("step", name, known);
  return rows;
}

const StepRow& rowOf(const json::Dictionary& step) {
  const std::vector<const StepRow*> rows = rowsOf(nameUnder("do", step));
  const auto& variant = rows.front()->variant;
  if (!variant) return *rows.front();
  const auto entry = step.find(variant->key);
  if (entry == step.end())
    throw StepError(json::write(rows.front()->name) + " needs " + json::write(variant->key));
  std::vector<std::string_view> choices;
  for (const StepRow* row : rows) {
    if (entry->second == json::Value(row->variant->value)) return *row;
    choices.push_back(row->variant->value);
  }
  throw StepError(json::write(variant->key) + " must be " + console::listed(choices, " or "));
}

void refuseKeysOfOthers(const json::Dictionary& step, const StepRow& row) {
  Names known{"do"};
  std::string where = json::write(row.name);
  if (row.variant) {
    known.push_back(row.variant->key);
    where += " with " + json::write(row.variant->value);
  }
  for (const KeyFacts& key : row.keys()) known.push_back(key.name);
  refuseOtherKeys(step, where, known);
}

}  // namespace

std::string Step::text() const {
  return json::write(keys_);
}

const std::string& Step::name() const {
  return nameUnder("do", keys_);
}

const json::Value* Step::find(std::string_view key) const {
  const auto entry = keys_.find(key);
  return entry == keys_.end() ? nullptr : &entry->second;
}

Step readStep(std::string_view text, bool serverIsElsewhere, std::size_t line) {
  return readStep(readObject(text), serverIsElsewhere, line);
}

Step readStep(json::Dictionary keys, bool serverIsElsewhere, std::size_t line) {
  const StepRow& row = rowOf(keys);
  if (row.needs == Needs::ownPushServer && serverIsElsewhere) throw StepError(kServerIsElsewhere);
  refuseKeysOfOthers(keys, row);
  Step step;
  for (const Rule& rule : row.rules) step.plays_.push_back(rule.bind(keys));
  step.needs_ = row.needs;
  step.line_ = line;
  step.keys_ = std::move(keys);
  return step;
}

}  // namespace quorvantis::scenario
