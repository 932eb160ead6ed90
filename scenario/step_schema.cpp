#include "scenario/step_schema.h"

#include <algorithm>
#include <array>
#include <map>
#include <string_view>
#include <vector>

#include "device/settings.h"
#include "json/write.h"

namespace quorvantis::scenario {

namespace {

using json::Value;

/// A kind of value: whether a value is of it, and how to say so.
struct Type {
  bool (*matches)(const Value& value);
  std::string_view description;
};

bool isText(const Value& value) {
  return value.get<std::string>() != nullptr;
}
bool isBoolean(const Value& value) {
  return value.get<bool>() != nullptr;
}
bool isObject(const Value& value) {
  return value.get<json::Dictionary>() != nullptr;
}

bool isTextOrNull(const Value& value) {
  return isText(value) || value.isNull();
}

bool isTexts(const Value& value) {
  const auto* array = value.get<json::Array>();
  return array != nullptr && std::all_of(array->begin(), array->end(), isText);
}

bool isTextsOrNull(const Value& value) {
  return isTexts(value) || value.isNull();
}

bool isHexadecimal(const Value& value) {
  const auto* text = value.get<std::string>();
  return text != nullptr && text->size() % 2 == 0 &&
         text->find_first_not_of("0123456789abcdefABCDEF") == std::string::npos;
}

bool isHexadecimalOrNull(const Value& value) {
  return isHexadecimal(value) || value.isNull();
}

bool isOneOf(const Value& value, std::initializer_list<std::string_view> names) {
  const auto* text = value.get<std::string>();
  return text != nullptr && std::find(names.begin(), names.end(), *text) != names.end();
}

bool isState(const Value& value) {
  return isOneOf(value, {"active", "inactive", "background"});
}

bool isArrival(const Value& value) {
  return isOneOf(value, {"foreground", "background", "tap"});
}

bool isCallback(const Value& value) {
  return isOneOf(value,
                 {"onGetToken:", "onReceiveNotification:", "onRegisterToken:", "onUpdateToken:", "onError:"});
}

bool isCallbacksOrNull(const Value& value) {
  const auto* array = value.get<json::Array>();
  return value.isNull() || (array != nullptr && std::all_of(array->begin(), array->end(), isCallback));
}

bool isStorable(const Value& value) {
  return isObject(value) && device::isPropertyList(value);
}

bool isByteOrBoolean(const Value& value) {
  const auto* number = value.get<std::int64_t>();
  return isBoolean(value) || (number != nullptr && *number >= 0 && *number <= 255);
}

bool isDuration(const Value& value) {
  const auto* whole = value.get<std::int64_t>();
  const auto* real = value.get<double>();
  return (whole != nullptr && *whole >= 0) || (real != nullptr && *real >= 0);
}

bool isAlertNumber(const Value& value) {
  const auto* number = value.get<std::int64_t>();
  return number != nullptr && *number >= 1;
}

bool isAnswer(const Value& value) {
  const auto* answer = value.get<json::Dictionary>();
  if (answer == nullptr) return false;
  if (const Value* fault = value.find("fault")) {
    return answer->size() == 1 && isOneOf(*fault, {"refuse", "untrusted", "reset", "truncate", "silence"});
  }
  const Value* status = value.find("status");
  const auto* number = status == nullptr ? nullptr : status->get<std::int64_t>();
  if (number == nullptr || *number < 200 || *number > 599 || *number == 204 || *number == 304) return false;
  if (answer->size() != 2) return false;
  const Value* body = value.find("body");
  const Value* bodyHex = value.find("bodyHex");
  return body != nullptr ? isText(*body) : bodyHex != nullptr && isHexadecimal(*bodyHex);
}

bool isAnswers(const Value& value) {
  const auto* array = value.get<json::Array>();
  return array != nullptr && std::all_of(array->begin(), array->end(), isAnswer);
}

constexpr Type kText{isText, "a text"};
constexpr Type kTextOrNull{isTextOrNull, "a text or null"};
constexpr Type kTextsOrNull{isTextsOrNull, "an array of texts or null"};
constexpr Type kTexts{isTexts, "an array of texts"};
constexpr Type kBoolean{isBoolean, "true or false"};
constexpr Type kObject{isObject, "an object"};
constexpr Type kStorable{isStorable, "an object without null at any depth"};
constexpr Type kHexadecimal{isHexadecimal, "a text of an even count of hexadecimal digits"};
constexpr Type kHexadecimalOrNull{isHexadecimalOrNull,
                                  "a text of an even count of hexadecimal digits, or null"};
constexpr Type kState{isState, R"("active", "inactive" or "background")"};
constexpr Type kArrival{isArrival, R"("foreground", "background" or "tap")"};
constexpr Type kCallbacksOrNull{isCallbacksOrNull, "an array of the callbacks' names, or null"};
constexpr Type kByteOrBoolean{isByteOrBoolean, "true, false or a whole number from 0 to 255"};
constexpr Type kDuration{isDuration, "a number, 0 or more"};
constexpr Type kAlertNumber{isAlertNumber, "a whole number from 1"};
constexpr Type kAnswers{isAnswers,
                        "an array of answers, each {\"status\": 200 to 599 but 204 and 304, \"body\": text}, "
                        "{\"status\", \"bodyHex\"} or {\"fault\": \"refuse\", \"untrusted\", \"reset\", "
                        "\"truncate\" or \"silence\"}"};

struct Key {
  std::string_view name;
  Type type;
  bool required = false;
};

using Schema = std::vector<Key>;

const std::map<std::string_view, Schema>& steps() {
  static const auto& schemas = *new std::map<std::string_view, Schema>{
      {"device",
       {{"systemVersion", kText},
        {"name", kText},
        {"model", kText},
        {"country", kTextOrNull},
        {"languages", kTextsOrNull},
        {"token", kHexadecimalOrNull},
        {"tokenError", kText}}},
      {"application", {{"state", kState}, {"version", kTextOrNull}, {"canOpenURL", kBoolean}}},
      {"library", {{"version", kTextOrNull}, {"loaded", kBoolean}}},
      {"store", {{"set", kStorable}, {"remove", kTexts}}},
      {"host",
       {{"appHash", kTextOrNull},
        {"deactivateGPS", kBoolean},
        {"foreground", kBoolean},
        {"delegate", kCallbacksOrNull}}},
      {"registration", {{"finishes", kBoolean}, {"stores", kStorable}}},
      {"authorization", {{"granted", kBoolean}, {"error", kTextOrNull}}},
      {"server", {{"answers", kAnswers, true}}},
      {"activate", {{"value", kByteOrBoolean, true}}},
      {"deliverToken", {{"hex", kHexadecimal, true}}},
      {"notification", {{"arrives", kArrival, true}, {"userInfo", kObject, true}}},
      {"deliver", {{"userInfo", kObject, true}}},
      {"tapOK", {{"alert", kAlertNumber, true}}},
      {"settle", {}},
      {"advance", {{"seconds", kDuration, true}}},
      {"relaunch", {}},
      {"show", {}},
  };
  return schemas;
}

/// The operations of "call", with the keys that each has besides "operation".
const std::map<std::string_view, Schema>& operations() {
  static const auto& schemas = *new std::map<std::string_view, Schema>{
      {"checkAppHash", {}},
      {"getVersion", {}},
      {"resetBadge", {}},
      {"registerFinish", {}},
      {"application:didRegisterForRemoteNotificationsWithDeviceToken:", {{"hex", kHexadecimal, true}}},
      {"application:didFailToRegisterForRemoteNotificationsWithError:", {{"error", kText, true}}},
  };
  return schemas;
}

std::string inQuotes(std::string_view name) {
  return json::write(json::Value(name));
}

/// The keys that the step may hold besides "do", or what keeps that from being known.
struct SchemaOrProblem {
  Schema schema;
  std::string problem;
};

SchemaOrProblem schemaOfCall(const json::Dictionary& step) {
  const auto operation = step.find("operation");
  if (operation == step.end()) return {{}, R"("call" needs "operation")"};
  if (!isText(operation->second)) return {{}, R"("operation" is to be a text)"};
  const auto& name = *operation->second.get<std::string>();
  const auto known = operations().find(name);
  if (known == operations().end()) return {{}, "unknown operation " + inQuotes(name)};
  Schema schema = known->second;
  schema.push_back({"operation", kText, true});
  return {schema, {}};
}

SchemaOrProblem schemaOf(const json::Dictionary& step, const std::string& name) {
  if (name == "call") return schemaOfCall(step);
  const auto known = steps().find(name);
  if (known == steps().end()) return {{}, "unknown step " + inQuotes(name)};
  Schema schema = known->second;
  if (name == "notification") {
    const auto arrives = step.find("arrives");
    if (arrives != step.end() && arrives->second == Value("tap")) schema.push_back({"action", kText});
  }
  return {schema, {}};
}

}  // namespace

std::string problemOf(const json::Dictionary& step, bool serverIsElsewhere) {
  const auto name = step.find("do");
  if (name == step.end()) return R"(a step needs "do")";
  if (!isText(name->second)) return R"("do" is to be a text)";
  const auto& stepName = *name->second.get<std::string>();
  const auto [schema, problem] = schemaOf(step, stepName);
  if (!problem.empty()) return problem;
  if (stepName == "server" && serverIsElsewhere) {
    return R"("server" can't tell a push server that runs elsewhere what to answer)";
  }

  for (const auto& [key, value] : step) {
    if (key == "do") continue;
    const auto known =
        std::find_if(schema.begin(), schema.end(), [&name = key](const Key& k) { return k.name == name; });
    if (known == schema.end()) return inQuotes(stepName) + " has no key " + inQuotes(key) + " here";
    if (!known->type.matches(value))
      return inQuotes(key) + " is to be " + std::string(known->type.description);
  }
  for (const Key& key : schema) {
    if (key.required && !step.contains(key.name)) return inQuotes(stepName) + " needs " + inQuotes(key.name);
  }
  return {};
}

}  // namespace quorvantis::scenario
