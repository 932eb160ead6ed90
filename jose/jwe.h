// The protection of a request's body: JSON Web Encryption in compact form, "dir" with "A128CBC-HS256"
// (RFC 7516; RFC 7518, section 5.2.3). The phone's transport and the push server share it. Any thread.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace quorvantis::jose {

/// The media type of a protected body.
inline constexpr std::string_view kMediaType = "application/jose";

/// The 32 bytes of the key are the content key. Throws std::invalid_argument for a key of another length and
/// std::runtime_error when the cryptography fails.
std::string seal(std::string_view body, std::string_view key);

/// The body, or nothing when `sealed` is not exactly of this form or does not open with the key.
std::optional<std::string> open(std::string_view sealed, std::string_view key);

}  // namespace quorvantis::jose
