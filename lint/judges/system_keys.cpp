#include "lint/judges/system_keys.h"

#include <algorithm>
#include <array>

#include "console/near_text.h"
#include "console/wording.h"

namespace quorvantis::lint {

namespace {

using json::Value;

enum class Kind { string, number, one, fraction, strings, object, sound };

struct Key {
  std::string_view name;
  Kind kind = Kind::string;
  std::span<const std::string_view> values{};  ///< none: any of the kind
};

constexpr std::array<std::string_view, 4> kLevels{"passive", "active", "time-sensitive", "critical"};
constexpr std::array<std::string_view, 3> kEvents{"start", "update", "end"};

constexpr std::array kInAps{
    Key{"sound", Kind::sound},
    Key{"thread-id"},
    Key{"category"},
    Key{"mutable-content", Kind::one},
    Key{"target-content-id"},
    Key{"interruption-level", Kind::string, kLevels},
    Key{"relevance-score", Kind::fraction},
    Key{"filter-criteria"},
};
constexpr std::array kOfLiveActivities{
    Key{"event", Kind::string, kEvents}, Key{"timestamp", Kind::number},     Key{"stale-date", Kind::number},
    Key{"dismissal-date", Kind::number}, Key{"content-state", Kind::object}, Key{"attributes-type"},
    Key{"attributes", Kind::object},
};
constexpr std::array kInAlert{
    Key{"subtitle"},
    Key{"launch-image"},
    Key{"title-loc-key"},
    Key{"title-loc-args", Kind::strings},
    Key{"subtitle-loc-key"},
    Key{"subtitle-loc-args", Kind::strings},
    Key{"loc-key"},
    Key{"loc-args", Kind::strings},
    Key{"action-loc-key"},
    Key{"summary-arg"},
    Key{"summary-arg-count", Kind::number},
};

/// Their names, and those of keys that are judged elsewhere.
template <std::size_t count, std::size_t more>
constexpr auto namesOf(const std::array<Key, count>& keys, const std::array<std::string_view, more>& others) {
  std::array<std::string_view, count + more> names;
  for (std::size_t i = 0; i < count; ++i) names[i] = keys[i].name;
  for (std::size_t i = 0; i < more; ++i) names[count + i] = others[i];
  return names;
}

bool isNumber(const Value& value) {
  return value.get<std::int64_t>() != nullptr || value.get<double>() != nullptr;
}

bool isText(const Value& value) {
  return value.get<std::string>() != nullptr;
}

double realOf(const Value& number) {
  const auto* whole = number.get<std::int64_t>();
  return whole != nullptr ? static_cast<double>(*whole) : *number.get<double>();
}

bool isFraction(const Value& value) {
  return isNumber(value) && realOf(value) >= 0 && realOf(value) <= 1;
}

bool isStrings(const Value& value) {
  const auto* array = value.get<json::Array>();
  return array != nullptr && std::all_of(array->begin(), array->end(), isText);
}

bool isSound(const Value& value) {
  const Value* name = value.find("name");
  const Value* volume = value.find("volume");
  return isText(value) || (name != nullptr && isText(*name) && (volume == nullptr || isFraction(*volume)));
}

std::string mustOf(Kind kind, const Value& value) {
  switch (kind) {
    case Kind::string:
      return isText(value) ? "" : "must be a string";
    case Kind::number:
      return isNumber(value) ? "" : "must be a number";
    case Kind::one:
      return value == Value(1) || value == Value(0) ? "" : "must be 1";
    case Kind::fraction:
      return isFraction(value) ? "" : "must be a number from 0 to 1";
    case Kind::strings:
      return isStrings(value) ? "" : "must be an array of strings";
    case Kind::object:
      return value.get<json::Dictionary>() != nullptr ? "" : "must be an object";
    case Kind::sound:
      return isSound(value) ? ""
                            : R"(must be a string, or an object with a "name" and a "volume" from 0 to 1)";
  }
  return "";
}

SystemValueProblem problemOf(const Key& key, const Value& value) {
  if (std::string must = mustOf(key.kind, value); !must.empty()) {
    return {std::move(must), key.kind == Kind::one && value == Value(true) ? Value(1) : Value()};
  }
  const auto* text = value.get<std::string>();
  if (key.values.empty() || std::find(key.values.begin(), key.values.end(), *text) != key.values.end())
    return {};
  const auto meant = console::nearestTo(*text, key.values);
  return {"must be one of " + console::listed(key.values), meant ? Value(*meant) : Value()};
}

}  // namespace

SystemValueProblem problemOfSystemValue(Place place, std::string_view key, const Value& value) {
  const auto among = [&](std::span<const Key> keys) -> SystemValueProblem {
    const auto known = std::find_if(keys.begin(), keys.end(), [&](const Key& k) { return k.name == key; });
    return known == keys.end() ? SystemValueProblem() : problemOf(*known, value);
  };
  if (place == Place::alert) return among(kInAlert);
  const SystemValueProblem problem = among(kInAps);
  return problem.must.empty() ? among(kOfLiveActivities) : problem;
}

std::span<const std::string_view> systemKeys(Place place) {
  static constexpr auto kApsNames = namesOf(kInAps, std::array<std::string_view, 0>());
  static constexpr auto kAlertNames = namesOf(kInAlert, std::array<std::string_view, 2>{"title", "body"});
  if (place == Place::alert) return kAlertNames;
  return kApsNames;
}

}  // namespace quorvantis::lint
