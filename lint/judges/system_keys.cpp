#include "lint/judges/system_keys.h"

#include <algorithm>
#include <array>
#include <span>
#include <vector>

#include "console/near_text.h"
#include "console/wording.h"
#include "device/remote_notification.h"

namespace quorvantis::lint {

namespace {

using json::Value;

enum class Kind { string, number, one, fraction, strings, object, sound, text, any };

struct Key {
  std::string_view name;
  Kind kind = Kind::string;
  std::span<const std::string_view> values{};  ///< none: any of the kind
};

constexpr std::array<std::string_view, 4> kLevels{"passive", "active", "time-sensitive", "critical"};

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
    Key{"event", Kind::string, device::kLiveActivityEvents},
    Key{"timestamp", Kind::number},
    Key{"stale-date", Kind::number},
    Key{"dismissal-date", Kind::number},
    Key{"content-state", Kind::object},
    Key{"attributes-type"},
    Key{"attributes", Kind::object},
    Key{"input-push-token", Kind::one},
    Key{"input-push-channel"},
};
/// Where a Live Activity takes other values than a notification for the application.
constexpr std::array kInLiveActivity{
    Key{"alert", Kind::object},
    Key{"relevance-score", Kind::number},
};
constexpr std::array kInAlert{
    Key{"title", Kind::any},  // judged by what the library does with them
    Key{"body", Kind::any},
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

constexpr std::array kInSound{
    Key{"critical", Kind::one},
    Key{"name", Kind::any},  // judged with the whole
    Key{"volume", Kind::any},
};
constexpr std::array kInAlertOfLiveActivity{
    Key{"title", Kind::text},
    Key{"body", Kind::text},
    Key{"sound"},
};
constexpr std::array kInText{
    Key{"loc-key"},
    Key{"loc-args", Kind::strings},
};

using Keys = std::span<const Key>;

/// The tables of a dictionary; of a key in several the first one counts.
std::vector<Keys> tablesOf(Place place) {
  switch (place) {
    case Place::aps:
      return {kInAps, kOfLiveActivities};
    case Place::alert:
      return {kInAlert};
    case Place::sound:
      return {kInSound};
    case Place::liveActivity:
      return {kInLiveActivity, kOfLiveActivities, kInAps};
    case Place::alertOfLiveActivity:
      return {kInAlertOfLiveActivity, kInAlert};
    case Place::textOfLiveActivity:
      return {kInText};
  }
  return {};
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

/// A text, or the key of one that the application has.
bool isTextOrKey(const Value& value) {
  const Value* key = value.find("loc-key");
  return isText(value) || (key != nullptr && isText(*key));
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
    case Kind::text:
      return isTextOrKey(value) ? "" : R"(must be a string, or an object with a "loc-key")";
    case Kind::any:
      return "";
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
  for (const Keys& keys : tablesOf(place)) {
    const auto known = std::find_if(keys.begin(), keys.end(), [&](const Key& k) { return k.name == key; });
    if (known != keys.end()) return problemOf(*known, value);
  }
  return {};
}

std::vector<std::string_view> systemKeys(Place place) {
  const auto tables = place == Place::aps ? std::vector<Keys>{kInAps} : tablesOf(place);
  std::vector<std::string_view> names;
  for (const Keys& keys : tables) {
    for (const Key& key : keys) names.push_back(key.name);
  }
  return names;
}

}  // namespace quorvantis::lint
