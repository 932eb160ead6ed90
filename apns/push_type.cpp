#include "apns/push_type.h"

#include <algorithm>
#include <array>

namespace quorvantis::apns {
namespace {

constexpr std::array kPushTypes = {
    PushType{"alert", ""},
    PushType{"background", ""},
    PushType{"controls", ".push-type.controls", "WidgetKit, which updates the controls"},
    PushType{"location", ".location-query", "the application's location push service extension"},
    PushType{"voip", ".voip", "PushKit, for a call"},
    PushType{"complication", ".complication", "PushKit, for the watch's complications"},
    PushType{"fileprovider", ".pushkit.fileprovider", "PushKit, for the File Provider extension"},
    PushType{"mdm", std::nullopt, "the device's management"},
    PushType{"liveactivity", ".push-type.liveactivity", "ActivityKit, which updates the Live Activity"},
    PushType{"pushtotalk", ".voip-ptt", "the Push to Talk framework"},
    PushType{"widgets", ".push-type.widgets", "WidgetKit, which updates the widgets"}};

}  // namespace

const PushType* findPushType(std::string_view name) {
  const auto* const found = std::find_if(kPushTypes.begin(), kPushTypes.end(),
                                         [&](const PushType& one) { return one.name == name; });
  return found == kPushTypes.end() ? nullptr : found;
}

bool isTopicOf(std::string_view application, std::string_view topic) {
  if (!topic.starts_with(application)) return false;
  topic.remove_prefix(application.size());
  return std::any_of(kPushTypes.begin(), kPushTypes.end(),
                     [&](const PushType& one) { return one.topicSuffix == topic; });
}

}  // namespace quorvantis::apns
