#include "phone/schema.h"

#include "scenario/step_table.h"

namespace quorvantis::phone {

namespace {

json::Value schemaOf(const scenario::KeyFacts& key) {
  json::Dictionary facts{{"name", key.name},
                         {"kind", key.kind.name},
                         {"description", key.kind.description},
                         {"null", key.kind.takesNull},
                         {"required", key.isRequired}};
  if (!key.kind.choices.empty()) {
    facts.emplace("choices", json::Array(key.kind.choices.begin(), key.kind.choices.end()));
  }
  return facts;
}

json::Value schemaOf(const scenario::StepRow& row) {
  json::Array keys;
  for (const scenario::KeyFacts& key : row.keys()) keys.push_back(schemaOf(key));
  json::Dictionary facts{{"name", row.name}, {"about", row.about}, {"keys", std::move(keys)}};
  if (row.variant) {
    facts.emplace("variant", json::Dictionary{{"key", row.variant->key}, {"value", row.variant->value}});
  }
  return facts;
}

}  // namespace

json::Value stepSchema() {
  json::Array steps;
  for (const scenario::StepRow& row : scenario::stepTable()) steps.push_back(schemaOf(row));
  return json::Dictionary{{"steps", std::move(steps)}};
}

}  // namespace quorvantis::phone
