#include "apns/request.h"

#include <algorithm>

#include "json/write.h"

namespace quorvantis::apns {
namespace {

constexpr std::size_t kBytesForEachHeader = 32;
constexpr std::size_t kMostKeptBytes = std::size_t{4} * 1024;  // of a value; no valid one is longer

}  // namespace

void Request::addHeader(std::string_view name, std::string_view value) {
  headerBytes_ += name.size() + value.size() + kBytesForEachHeader;
  value = value.substr(0, kMostKeptBytes);
  if (name == ":method") {
    method_ = value;
  } else if (name == ":path") {
    path_ = value;
  }
  const auto* const known = std::find(kHeaderNames.begin(), kHeaderNames.end(), name);
  if (known == kHeaderNames.end()) return;
  auto& slot = headers_[static_cast<std::size_t>(known - kHeaderNames.begin())];
  repeatsHeader_ = repeatsHeader_ || slot.has_value();
  if (!slot) slot = value;
}

void Request::addBody(std::string_view bytes) {
  bodyBytes_ += bytes.size();
  body_.append(bytes.substr(0, kMostPayloadBytes + 1 - body_.size()));
}

std::string bodyOf(const Answer& answer) {
  json::Dictionary body{{"reason", answer.reason}};
  if (answer.timestamp) body.emplace("timestamp", *answer.timestamp);
  return json::write(body);
}

}  // namespace quorvantis::apns
