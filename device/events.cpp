#include "device/events.h"

#include <utility>

namespace quorvantis::device::events {

namespace {

json::Value orNull(const Text& text) {
  return text ? json::Value(*text) : json::Value();
}

}  // namespace

Event registerUser(const RegisterUser& user) {
  return {{"event", "registerUser"},          {"userType", orNull(user.userType)},
          {"version", orNull(user.version)},  {"subType", orNull(user.subType)},
          {"hash", orNull(user.hash)},        {"deactivateGPS", user.deactivateGPS},
          {"waitUntilGPS", user.waitUntilGPS}};
}

Event authorizationRequested(std::int64_t options) {
  return {{"event", "authorizationRequested"}, {"options", options}};
}

Event registerForRemoteNotifications() {
  return {{"event", "registerForRemoteNotifications"}};
}

Event callback(std::string selector, json::Value argument) {
  return {{"event", "callback"}, {"selector", std::move(selector)}, {"argument", std::move(argument)}};
}

Event log(const Text& tag, const Text& message) {
  return {{"event", "log"}, {"tag", orNull(tag)}, {"message", orNull(message)}};
}

Event stored(std::string key, json::Value value) {
  return {{"event", "stored"}, {"key", std::move(key)}, {"value", std::move(value)}};
}

Event synchronized() {
  return {{"event", "synchronized"}};
}

Event request(const Text& task, const Text& url, const Text& body) {
  return {{"event", "request"}, {"task", orNull(task)}, {"url", orNull(url)}, {"body", orNull(body)}};
}

Event received(std::string path, std::string body) {
  return {{"event", "received"}, {"path", std::move(path)}, {"body", std::move(body)}};
}

Event presented(std::int64_t options) {
  return {{"event", "presented"}, {"options", options}};
}

Event completed(std::string operation) {
  return {{"event", "completed"}, {"operation", std::move(operation)}};
}

Event badge(std::int64_t number) {
  return {{"event", "badge"}, {"number", number}};
}

Event vibrated(std::int64_t sound) {
  return {{"event", "vibrated"}, {"sound", sound}};
}

Event alertShown(int alert, json::Value title, json::Value message, const std::vector<std::string>& buttons,
                 double windowLevel) {
  return {{"event", "alertShown"},
          {"alert", alert},
          {"title", std::move(title)},
          {"message", std::move(message)},
          {"buttons", json::Array(buttons.begin(), buttons.end())},
          {"windowLevel", static_cast<std::int64_t>(windowLevel)}};
}

Event alertHidden(int alert) {
  return {{"event", "alertHidden"}, {"alert", alert}};
}

Event opened(const Text& url) {
  return {{"event", "opened"}, {"url", orNull(url)}};
}

Event returned(std::string operation, json::Value value) {
  return {{"event", "returned"}, {"operation", std::move(operation)}, {"value", std::move(value)}};
}

Event raised(std::string selector) {
  return {{"event", "raised"}, {"selector", std::move(selector)}};
}

Event settings(json::Dictionary values) {
  return {{"event", "settings"}, {"values", std::move(values)}};
}

}  // namespace quorvantis::device::events
