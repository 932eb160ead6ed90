#include "apns/examination.h"

#include <algorithm>
#include <array>
#include <variant>

#include "base/hexadecimal.h"
#include "base/utf8.h"
#include "json/read.h"

namespace quorvantis::apns {
namespace {

constexpr std::string_view kDevicePath = "/3/device";

struct PushType {
  std::string_view name;
  std::string_view topicSuffix;
};

constexpr std::array kPushTypes = {PushType{"alert", ""},
                                   PushType{"background", ""},
                                   PushType{"controls", ".push-type.controls"},
                                   PushType{"location", ".location-query"},
                                   PushType{"voip", ".voip"},
                                   PushType{"complication", ".complication"},
                                   PushType{"fileprovider", ".pushkit.fileprovider"},
                                   PushType{"mdm", ""},
                                   PushType{"liveactivity", ".push-type.liveactivity"},
                                   PushType{"pushtotalk", ".voip-ptt"},
                                   PushType{"widgets", ".push-type.widgets"}};

std::optional<json::Value> readObject(const std::string& text) {
  if (!base::isUTF8(text)) return std::nullopt;
  auto read = json::read(text, {.deepest = json::kDeepest - 1});  // it becomes a part of a step
  auto* const value = std::get_if<json::Value>(&read);
  if (value == nullptr || value->get<json::Dictionary>() == nullptr) return std::nullopt;
  return std::move(*value);
}

std::string_view withoutSuffix(std::string_view topic, std::string_view pushType) {
  const auto suffix = topicSuffixOf(pushType);
  if (suffix && topic.ends_with(*suffix)) topic.remove_suffix(suffix->size());
  return topic;
}

}  // namespace

std::optional<std::string_view> deviceTokenIn(std::string_view path) {
  if (!path.starts_with(kDevicePath)) return std::nullopt;
  path.remove_prefix(kDevicePath.size());
  if (path.empty()) return path;
  if (path.front() != '/') return std::nullopt;
  return path.substr(1);
}

std::optional<std::string_view> topicSuffixOf(std::string_view pushType) {
  const auto* const found = std::find_if(kPushTypes.begin(), kPushTypes.end(),
                                         [&](const PushType& one) { return one.name == pushType; });
  return found == kPushTypes.end() ? std::nullopt : std::optional(found->topicSuffix);
}

Examination::Examination(const Request& given, const Provider& from, const Rules& by, const Phone& phone,
                         std::int64_t second)
    : request(given),
      provider(from),
      rules(by),
      now(second),
      deviceToken(deviceTokenIn(given.path())),
      pushType(given.header(Header::pushType).value_or("alert")),
      topic(given.header(Header::topic).value_or(from.certificateTopic)) {
  topic = withoutSuffix(topic, pushType);
  if (deviceToken && !deviceToken->empty()) {
    if (const auto bytes = base::bytesFromHexadecimal(*deviceToken)) known = phone.find(*bytes);
  }
  if (request.bodyBytes() <= Request::kMostPayloadBytes) payload = readObject(request.body());
  readProviderToken();
}

void Examination::readProviderToken() {
  const auto& authorization = request.header(Header::authorization);
  if (authorization) tokenText = bearerIn(*authorization).value_or("");
  if (tokenText.empty()) return;
  if (tokenText == provider.tokenText) {
    token = provider.token;
    isTokenGood = true;
    return;
  }
  token = apns::readProviderToken(tokenText);
  isTokenGood = token && (rules.key == nullptr || rules.key->hasSigned(tokenText));
}

}  // namespace quorvantis::apns
