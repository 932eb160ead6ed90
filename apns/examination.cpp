#include "apns/examination.h"

#include <variant>

#include "base/hexadecimal.h"
#include "base/utf8.h"
#include "json/read.h"

namespace quorvantis::apns {
namespace {

constexpr std::string_view kDevicePath = "/3/device";

std::optional<json::Value> readObject(const std::string& text) {
  if (!base::isUTF8(text)) return std::nullopt;
  auto read = json::read(text, {.deepest = json::kDeepest - 1});  // it becomes a part of a step
  auto* const value = std::get_if<json::Value>(&read);
  if (value == nullptr || value->get<json::Dictionary>() == nullptr) return std::nullopt;
  return std::move(*value);
}

}  // namespace

std::optional<std::string_view> deviceTokenIn(std::string_view path) {
  if (!path.starts_with(kDevicePath)) return std::nullopt;
  path.remove_prefix(kDevicePath.size());
  if (path.empty()) return path;
  if (path.front() != '/') return std::nullopt;
  return path.substr(1);
}

Examination::Examination(const Request& given, const Provider& from, const Rules& by, const Phone& phone,
                         std::int64_t second)
    : request(given),
      provider(from),
      rules(by),
      now(second),
      room(phone.room()),
      deviceToken(deviceTokenIn(given.path())),
      pushType(findPushType(given.header(Header::pushType).value_or("alert"))) {
  readTopic();
  if (deviceToken && !deviceToken->empty()) {
    if (const auto bytes = base::bytesFromHexadecimal(*deviceToken)) known = phone.find(*bytes);
  }
  if (request.bodyBytes() <= Request::kMostPayloadBytes) payload = readObject(request.body());
  readProviderToken();
}

void Examination::readTopic() {
  if (const auto& given = request.header(Header::topic)) {
    topic = *given;
    return;
  }
  topic = provider.certificateTopic;
  if (topic.empty() || pushType == nullptr || !pushType->topicSuffix) return;
  if (!topic.ends_with(*pushType->topicSuffix)) topic += *pushType->topicSuffix;
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
  isTokenGood = token && (rules.keyId.empty() || token->keyId == rules.keyId) &&
                (rules.key == nullptr || rules.key->hasSigned(tokenText));
}

}  // namespace quorvantis::apns
