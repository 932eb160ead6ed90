// Signatures of JSON Web Signature in compact form with ES256 (RFC 7515; RFC 7518, section 3.4). Any thread;
// one key serves several at a time.
#pragma once

#include <memory>
#include <string>
#include <string_view>

namespace quorvantis::jose {

/// A public key on P-256.
class SigningKey {
 public:
  /// From a PEM text that holds the key's private or its public half. Throws std::runtime_error, which says
  /// what is wrong with it and nothing of what it holds.
  explicit SigningKey(const std::string& pem);
  ~SigningKey();

  /// Whether the key has signed the token, whose header says "ES256".
  [[nodiscard]] bool hasSigned(std::string_view token) const;

 private:
  struct State;
  std::unique_ptr<State> state_;
};

}  // namespace quorvantis::jose
