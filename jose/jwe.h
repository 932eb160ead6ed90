// The encryption of request bodies: JSON Web Encryption in compact form, "dir" with "A128CBC-HS256" (RFC
// 7516; RFC 7518, section 5.2.3), for the phone's transport and the push server. Any thread.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace quorvantis::jose {

/// The media type of an encrypted body.
inline constexpr std::string_view kMediaType = "application/jose";

/// The key's 32 bytes are the content key. Throws std::invalid_argument for a key of another length and
/// std::runtime_error when the encryption fails.
std::string seal(std::string_view body, std::string_view key);

/// The body, or nothing when `sealed` does not have exactly this form or can't be decrypted with the key.
std::optional<std::string> open(std::string_view sealed, std::string_view key);

}  // namespace quorvantis::jose
