// The development server's certificate authority, created anew in memory. Any thread.
#pragma once

#include <chrono>
#include <memory>
#include <string>
#include <vector>

namespace quorvantis::server {

/// A certificate with its private key, both PEM.
struct Identity {
  std::string certificate;
  std::string privateKey;
};

/// How a certificate differs from a valid one for its host.
struct IssueOptions {
  std::chrono::seconds notBefore = std::chrono::hours(-1);  ///< relative to now
  std::chrono::seconds notAfter = std::chrono::hours(24 * 30);
  int rsaBits = 0;          ///< 0: an elliptic key on P-256
  bool selfSigned = false;  ///< by its own key, not the authority's
};

class Authority {
 public:
  /// Can sign for the names and addresses in `only`, and for subdomains of such names; for any when it is
  /// empty.
  explicit Authority(const std::vector<std::string>& only = {});
  ~Authority();
  Authority(const Authority&) = delete;
  Authority& operator=(const Authority&) = delete;

  /// The authority's own certificate, PEM, for devices to trust.
  [[nodiscard]] std::string certificate() const;

  /// Whether the text is exactly one certificate of such an authority.
  [[nodiscard]] static bool isCertificate(const std::string& text);

  /// A server certificate for the host (a DNS name, or an IP address).
  [[nodiscard]] Identity issue(const std::string& host, IssueOptions options = {}) const;
  /// The same for all of them.
  [[nodiscard]] Identity issue(const std::vector<std::string>& hosts, IssueOptions options = {}) const;

 private:
  struct State;
  std::unique_ptr<State> state_;
};

}  // namespace quorvantis::server
