// The kinds of notifications that Apple's service tells apart, by the header `apns-push-type`. Plain values.
#pragma once

#include <optional>
#include <string_view>

namespace quorvantis::apns {

struct PushType {
  std::string_view name;
  /// What the topic has after the application's bundle identifier; nothing: it is not an application's.
  std::optional<std::string_view> topicSuffix;
  /// Who gets it in place of the application's notification entry points; empty: they do.
  std::string_view receiver = {};
};

/// Null for an unknown name.
const PushType* findPushType(std::string_view name);

/// Whether the topic is the application's, for whatever push type.
bool isTopicOf(std::string_view application, std::string_view topic);

}  // namespace quorvantis::apns
