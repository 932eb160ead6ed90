// The token with which a provider authenticates: a JSON Web Token (RFC 7519). Any thread.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace quorvantis::apns {

struct ProviderToken {
  std::string keyId;
  std::string team;
  std::int64_t issuedAt = 0;  ///< seconds since 1970
};

/// The token's claims; nothing when it does not have the form that Apple's service requires. The signature is
/// not verified.
std::optional<ProviderToken> readProviderToken(std::string_view token);

/// The token in an `authorization` header; nothing for another scheme.
std::optional<std::string_view> bearerIn(std::string_view authorization);

}  // namespace quorvantis::apns
