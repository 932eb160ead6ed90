#include "apns/push_type.h"

#include <algorithm>
#include <array>

namespace quorvantis::apns {
namespace {

constexpr std::array kPushTypes = {PushType{"alert", ""},
                                   PushType{"background", ""},
                                   PushType{"controls", ".push-type.controls"},
                                   PushType{"location", ".location-query"},
                                   PushType{"voip", ".voip"},
                                   PushType{"complication", ".complication"},
                                   PushType{"fileprovider", ".pushkit.fileprovider"},
                                   PushType{"mdm", std::nullopt},
                                   PushType{"liveactivity", ".push-type.liveactivity"},
                                   PushType{"pushtotalk", ".voip-ptt"},
                                   PushType{"widgets", ".push-type.widgets"}};

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
