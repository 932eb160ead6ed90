// The events that a device's record holds, one function for each kind. Any thread.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "device/record.h"

namespace quorvantis::device::events {

/// A string, or null.
using Text = std::optional<std::string>;

struct RegisterUser {
  Text userType, version, subType, hash;
  bool deactivateGPS = false;
  bool waitUntilGPS = false;
};

Event registerUser(const RegisterUser& user);
Event authorizationRequested(std::int64_t options);
Event registerForRemoteNotifications();
/// The host's delegate received `argument` (null for nil).
Event callback(std::string selector, json::Value argument);
Event log(const Text& tag, const Text& message);
/// Null: the key was removed by storing nil.
Event stored(std::string key, json::Value value);
Event synchronized();
Event request(const Text& task, const Text& url, const Text& body);
Event received(std::string path, std::string body);
Event presented(std::int64_t options);
Event completed(std::string operation);
Event badge(std::int64_t number);
Event vibrated(std::int64_t sound);
Event alertShown(int alert, json::Value title, json::Value message, const std::vector<std::string>& buttons,
                 double windowLevel);
Event alertHidden(int alert);
Event opened(const Text& url);
Event returned(std::string operation, json::Value value);
/// A message was not understood, a value rejected, or an index out of range.
Event raised(std::string selector);
Event settings(json::Dictionary values);

}  // namespace quorvantis::device::events
