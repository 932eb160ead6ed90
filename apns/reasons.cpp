#include "apns/reasons.h"

#include <algorithm>
#include <array>
#include <cstdlib>

#include "apns/examination.h"
#include "apns/uuid.h"
#include "base/ascii.h"
#include "base/utf8.h"
#include "device/remote_notification.h"

namespace quorvantis::apns {
namespace {

constexpr std::size_t kMostCollapseIdBytes = 64;
constexpr std::size_t kMostExpirationDigits = 18;
constexpr std::int64_t kTokenLife = std::int64_t{60} * 60;     // seconds
constexpr std::int64_t kTokenAtLeast = std::int64_t{20} * 60;  // seconds between two of them
constexpr std::int64_t kClockDifference =
    std::int64_t{5} * 60;  // seconds that a provider's clock may be ahead

bool isOf(const Examination& seen, std::string_view pushType) {
  return seen.pushType != nullptr && seen.pushType->name == pushType;
}

bool hasBadCollapseId(const Examination& seen) {
  const auto& id = seen.request.header(Header::collapseId);
  return id && (id->size() > kMostCollapseIdBytes || !base::isUTF8(*id));
}

bool hasBadDeviceToken(const Examination& seen) {
  return seen.deviceToken && !seen.deviceToken->empty() && !seen.known;
}

bool hasBadExpiration(const Examination& seen) {
  const auto& date = seen.request.header(Header::expiration);
  return date && (date->empty() || date->size() > kMostExpirationDigits ||
                  !std::all_of(date->begin(), date->end(), base::isDigit));
}

bool hasBadMessageId(const Examination& seen) {
  const auto& id = seen.request.header(Header::id);
  return id && !isUuid(*id);
}

bool hasBadPriority(const Examination& seen) {
  const auto& given = seen.request.header(Header::priority);
  const std::string priority = given.value_or("10");
  if (priority == "10") return isOf(seen, "background");
  if (priority == "1") return isOf(seen, "background") || isOf(seen, "liveactivity");
  return priority != "5";
}

bool isWritable(std::string_view topic) {
  return !topic.empty() && std::all_of(topic.begin(), topic.end(), [](char c) {
    return base::isLetter(c) || base::isDigit(c) || c == '.' || c == '-' || c == '_';
  });
}

/// An unknown push type is told by a reason of its own.
bool hasTopicOfPushType(const Examination& seen) {
  if (seen.pushType == nullptr) return true;
  return seen.pushType->topicSuffix &&
         seen.topic == seen.rules.topic + std::string(*seen.pushType->topicSuffix);
}

bool lacksTopic(const Examination& seen) {
  return seen.topic.empty() && !seen.request.header(Header::topic);
}

bool hasBadTopic(const Examination& seen) {
  if (lacksTopic(seen)) return false;
  if (!isWritable(seen.topic) || (seen.pushType != nullptr && !seen.pushType->topicSuffix)) return true;
  return isTopicOf(seen.rules.topic, seen.topic) && !hasTopicOfPushType(seen);
}

bool isForAnotherTopic(const Examination& seen) {
  return !lacksTopic(seen) && !isTopicOf(seen.rules.topic, seen.topic);
}

bool isTopicDisallowed(const Examination& seen) {
  const std::string& allowed = seen.provider.certificateTopic;
  return seen.provider.certificate == Provider::Certificate::trusted && !allowed.empty() &&
         seen.topic != allowed && !isTopicOf(allowed, seen.topic);
}

bool repeatsHeader(const Examination& seen) {
  return seen.request.repeatsHeader();
}

bool hasInvalidPushType(const Examination& seen) {
  return seen.pushType == nullptr;
}

bool hasTooManyHeaders(const Examination& seen) {
  return seen.request.hasTooManyHeaders();
}

bool isNoBackgroundPayload(const Examination& seen) {
  const json::Value* const aps = seen.payload ? seen.payload->find("aps") : nullptr;
  if (!isOf(seen, "background") || aps == nullptr) return false;
  return aps->find("alert") != nullptr || aps->find("badge") != nullptr || aps->find("sound") != nullptr;
}

bool lacksDeviceToken(const Examination& seen) {
  return seen.deviceToken && seen.deviceToken->empty();
}

bool hasBadCertificate(const Examination& seen) {
  return seen.provider.certificate == Provider::Certificate::untrusted;
}

bool isTokenExpired(const Examination& seen) {
  return seen.token && seen.now - seen.token->issuedAt > kTokenLife;
}

bool isTokenInvalid(const Examination& seen) {
  if (seen.tokenText.empty()) return false;
  return !seen.isTokenGood || seen.token->issuedAt - seen.now > kClockDifference;
}

bool lacksToken(const Examination& seen) {
  return seen.tokenText.empty() && seen.provider.certificate != Provider::Certificate::trusted;
}

bool hasUnrelatedKey(const Examination& seen) {
  return seen.token && seen.provider.token && seen.token->keyId != seen.provider.token->keyId;
}

bool hasBadPath(const Examination& seen) {
  return !seen.deviceToken;
}

bool hasOtherMethod(const Examination& seen) {
  return seen.request.method() != "POST";
}

bool isUnregistered(const Examination& seen) {
  return seen.known && seen.known->invalidSince;
}

bool isTooLarge(const Examination& seen) {
  return seen.request.bodyBytes() >
         (isOf(seen, "voip") ? Request::kMostPayloadBytes : device::kLargestPayload);
}

bool hasCrowdedPrompt(const Examination& seen) {
  return seen.room == Room::promptFull;
}

bool isPhoneFull(const Examination& seen) {
  return seen.room == Room::full;
}

bool lacksPayload(const Examination& seen) {
  return !isTooLarge(seen) && !seen.payload;
}

bool changesTokensTooOften(const Examination& seen) {
  if (!seen.token || !seen.provider.token || seen.tokenText == seen.provider.tokenText) return false;
  return std::abs(seen.token->issuedAt - seen.provider.token->issuedAt) < kTokenAtLeast;
}

constexpr std::array kReasons = {
    // method and path
    Reason{405, "MethodNotAllowed", "the method must be POST", hasOtherMethod},
    Reason{404, "BadPath", "the path must be /3/device/ and a device token", hasBadPath},
    // who asks
    Reason{403, "BadCertificate",
           "the client's certificate was not signed by the authority that --client-authority names",
           hasBadCertificate},
    Reason{403, "ExpiredProviderToken",
           "the provider token was issued more than an hour ago, by its claim \"iat\"", isTokenExpired},
    Reason{403, "InvalidProviderToken",
           "the provider token must be a JWT with \"alg\" ES256, a \"kid\" and an \"iss\" of 10 capitals and "
           "digits, and an \"iat\" in seconds that is not in the future, signed with the key that "
           "--provider-key names, if any",
           isTokenInvalid},
    Reason{403, "MissingProviderToken",
           "the request has no \"authorization: bearer TOKEN\" header and the client no certificate",
           lacksToken},
    Reason{403, "UnrelatedKeyIdInToken",
           "the provider token names another key than the first one on this connection", hasUnrelatedKey},
    Reason{429, "TooManyProviderTokenUpdates",
           "a second provider token on this connection, issued within 20 minutes of the first; reuse "
           "the first one",
           changesTokensTooOften},
    // the topic
    Reason{
        400, "BadTopic",
        "apns-topic must be the application's bundle identifier with the suffix of the push type: none for "
        "alert and background, .voip for voip and so on; there is no topic for mdm",
        hasBadTopic},
    Reason{400, "DeviceTokenNotForTopic",
           "the device token belongs to another application than apns-topic; --topic sets the phone's",
           isForAnotherTopic},
    Reason{400, "MissingTopic", "apns-topic is missing; it is required with a provider token", lacksTopic},
    Reason{400, "TopicDisallowed", "the client's certificate is for another topic", isTopicDisallowed},
    // the other headers
    Reason{400, "BadCollapseId", "apns-collapse-id has more than 64 bytes, or is not UTF-8",
           hasBadCollapseId},
    Reason{400, "BadExpirationDate", "apns-expiration must be a whole number of seconds since 1970",
           hasBadExpiration},
    Reason{400, "BadMessageId", "apns-id must be a UUID of the form 8-4-4-4-12", hasBadMessageId},
    Reason{400, "BadPriority",
           "apns-priority must be 10, 5 or 1, and is 10 when left out; push type background needs 5, "
           "liveactivity 5 or 10",
           hasBadPriority},
    Reason{400, "DuplicateHeaders", "authorization or an apns- header was sent twice", repeatsHeader},
    Reason{400, "InvalidPushType", "there is no such apns-push-type", hasInvalidPushType},
    Reason{431, "RequestHeaderFieldsTooLarge", "the headers have more than 32 KiB in all", hasTooManyHeaders},
    // the device token
    Reason{400, "BadDeviceToken",
           "this phone never had the token in the path; send to the one that it printed or registered",
           hasBadDeviceToken},
    Reason{400, "MissingDeviceToken", "the path has no device token", lacksDeviceToken},
    Reason{410, "Unregistered", "the phone no longer has this device token", isUnregistered},
    // the payload
    Reason{400, "InvalidPushType",
           "apns-push-type is background, and the payload has an alert, a badge or a sound",
           isNoBackgroundPayload},
    Reason{400, "PayloadEmpty", "the body is empty or not a JSON object", lacksPayload},
    Reason{413, "PayloadTooLarge", "the payload has more than 4,096 bytes (5,120 for push type voip)",
           isTooLarge},
    // never by the request alone
    Reason{400, "IdleTimeout", "the request was not finished in time", nullptr},
    Reason{403, "BadCertificateEnvironment", "the client's certificate is for the other environment",
           nullptr},
    Reason{403, "BadEnvironmentKeyIdInToken", "the provider token's key is for the other environment",
           nullptr},
    Reason{403, "Forbidden", "the action is not allowed", nullptr},
    Reason{410, "ExpiredToken", "the device token has expired", nullptr},
    Reason{429, "TooManyRequests",
           "too many notifications wait for the answer to the phone's permission prompt; answer it",
           hasCrowdedPrompt},
    Reason{500, "InternalServerError", "the service failed", nullptr},
    Reason{503, "ServiceUnavailable",
           "the phone is full: save the session and begin a fresh phone, or start one with --most-lines and "
           "--most-mebibytes",
           isPhoneFull},
    Reason{503, "Shutdown", "the service is shutting down", nullptr}};

}  // namespace

std::span<const Reason> reasons() {
  return kReasons;
}

const Reason* findReason(std::string_view name) {
  const auto* const found = std::find_if(kReasons.begin(), kReasons.end(),
                                         [&](const Reason& reason) { return reason.name == name; });
  return found == kReasons.end() ? nullptr : found;
}

}  // namespace quorvantis::apns
