// Verifies JSON Web Signatures in compact form with ES256 (RFC 7515; RFC 7518, section 3.4). Any thread;
// several threads may use one key.
#pragma once

#include <memory>
#include <string>
#include <string_view>

namespace quorvantis::jose {

/// A public key on P-256.
class SigningKey {
 public:
  /// From a private or public key in PEM. Throws std::runtime_error, whose message contains nothing of the
  /// key.
  explicit SigningKey(const std::string& pem);
  ~SigningKey();

  /// Whether the token's header says "ES256" and its signature is this key's.
  [[nodiscard]] bool hasSigned(std::string_view token) const;

 private:
  struct State;
  std::unique_ptr<State> state_;
};

}  // namespace quorvantis::jose
