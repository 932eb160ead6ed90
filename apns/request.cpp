#include "apns/request.h"

#include <algorithm>
#include <utility>

#include "json/write.h"

namespace quorvantis::apns {
namespace {

constexpr std::size_t kBytesForEachHeader = 32;

/// What is kept of a header, and how long its longest valid value is.
struct Kept {
  std::string_view name;
  std::size_t longest;
};

constexpr Kept kMethod = {":method", std::string_view("POST").size()};
constexpr Kept kPath = {":path", 1024};  // Apple says of a device token only that its length may change
/// In the enumeration's order.
constexpr std::array<Kept, kHeaders> kKept = {
    Kept{"authorization", std::string_view("bearer ").size() + 2048},
    Kept{"apns-topic", 255},
    Kept{"apns-push-type", std::string_view("liveactivity").size()},
    Kept{"apns-priority", std::string_view("10").size()},
    Kept{"apns-expiration", 18},
    Kept{"apns-collapse-id", 64},
    Kept{"apns-id", 36}};

/// With one byte more a value that is too long does not become a valid one.
std::string_view beginningOf(std::string_view value, const Kept& kept) {
  return value.substr(0, kept.longest + 1);
}

}  // namespace

std::size_t Request::addHeader(std::string_view name, std::string_view value) {
  headerBytes_ += name.size() + value.size() + kBytesForEachHeader;
  for (const auto& [kept, into] : {std::pair(kMethod, &method_), std::pair(kPath, &path_)}) {
    if (name != kept.name) continue;
    *into = beginningOf(value, kept);
    return into->size();
  }
  const auto* const known =
      std::find_if(kKept.begin(), kKept.end(), [&](const Kept& one) { return one.name == name; });
  if (known == kKept.end()) return 0;
  auto& slot = headers_[static_cast<std::size_t>(known - kKept.begin())];
  repeatsHeader_ = repeatsHeader_ || slot.has_value();
  if (slot) return 0;
  slot = beginningOf(value, *known);
  return slot->size();
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
