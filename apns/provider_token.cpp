#include "apns/provider_token.h"

#include <algorithm>
#include <array>
#include <variant>

#include "base/ascii.h"
#include "base/utf8.h"
#include "jose/base64url.h"
#include "json/read.h"

namespace quorvantis::apns {
namespace {

constexpr std::size_t kIdentifierLength = 10;
constexpr std::size_t kSignatureBytes = 64;
constexpr std::size_t kMostTokenBytes = 2048;
constexpr std::int64_t kLastSecond = 253402300799;  // of the year 9999
constexpr std::string_view kScheme = "bearer ";

using Parts = std::array<std::string_view, 3>;

std::optional<Parts> split(std::string_view token) {
  const std::size_t first = token.find('.');
  const std::size_t last = token.rfind('.');
  if (first == last || token.find('.', first + 1) != last) return std::nullopt;
  return Parts{token.substr(0, first), token.substr(first + 1, last - first - 1), token.substr(last + 1)};
}

std::optional<json::Value> object(std::string_view part) {
  const auto text = jose::decodeBase64url(part);
  if (!text || !base::isUTF8(*text)) return std::nullopt;
  auto read = json::read(*text, {.refuseDuplicateKeys = true});
  auto* const value = std::get_if<json::Value>(&read);
  if (value == nullptr || value->get<json::Dictionary>() == nullptr) return std::nullopt;
  return std::move(*value);
}

/// Key ids and teams: capitals and digits.
std::optional<std::string> identifier(const json::Value& holder, std::string_view name) {
  const json::Value* const value = holder.find(name);
  const auto* const text = value == nullptr ? nullptr : value->get<std::string>();
  const bool good = text != nullptr && text->size() == kIdentifierLength &&
                    std::all_of(text->begin(), text->end(),
                                [](char c) { return base::isDigit(c) || (c >= 'A' && c <= 'Z'); });
  return good ? std::optional(*text) : std::nullopt;
}

bool isES256(const json::Value& header) {
  const json::Value* const algorithm = header.find("alg");
  return algorithm != nullptr && *algorithm == json::Value("ES256") && header.find("crit") == nullptr;
}

/// Whole seconds; fractions are dropped.
std::optional<std::int64_t> seconds(const json::Value& claims) {
  const json::Value* const value = claims.find("iat");
  if (value == nullptr) return std::nullopt;
  if (const auto* const whole = value->get<std::int64_t>()) {
    return *whole >= 0 && *whole <= kLastSecond ? std::optional(*whole) : std::nullopt;
  }
  const auto* const real = value->get<double>();
  if (real == nullptr || !(*real >= 0 && *real <= static_cast<double>(kLastSecond))) return std::nullopt;
  return static_cast<std::int64_t>(*real);
}

}  // namespace

std::optional<ProviderToken> readProviderToken(std::string_view token) {
  if (token.size() > kMostTokenBytes) return std::nullopt;
  const auto parts = split(token);
  if (!parts || jose::decodedSize((*parts)[2]) != kSignatureBytes) return std::nullopt;
  const auto header = object((*parts)[0]);
  const auto claims = object((*parts)[1]);
  if (!header || !claims || !isES256(*header)) return std::nullopt;
  const auto keyId = identifier(*header, "kid");
  const auto team = identifier(*claims, "iss");
  const auto issuedAt = seconds(*claims);
  if (!keyId || !team || !issuedAt) return std::nullopt;
  return ProviderToken{*keyId, *team, *issuedAt};
}

std::optional<std::string_view> bearerIn(std::string_view authorization) {
  if (base::lowerCase(std::string(authorization.substr(0, kScheme.size()))) != kScheme) return std::nullopt;
  return authorization.substr(kScheme.size());
}

}  // namespace quorvantis::apns
