// The token by which a provider says who it is: a JSON Web Token (RFC 7519). Any thread.
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

/// What the token says of itself; nothing when it has not the form that Apple's service asks for. The
/// signature is not looked at beyond its form.
std::optional<ProviderToken> readProviderToken(std::string_view token);

/// The token in an `authorization` header; nothing when that is of another kind.
std::optional<std::string_view> bearerIn(std::string_view authorization);

}  // namespace quorvantis::apns
