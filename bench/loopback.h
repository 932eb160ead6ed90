// A push server on loopback, and two ways to register a token with it: the library, from the token to the
// host's callback, and a bare libcurl program that posts the same bytes. Main thread.
#pragma once

#include <atomic>
#include <cstdint>
#include <memory>
#include <string>

#include "bench/phone.h"
#include "device/transport.h"
#include "server/push_server.h"

namespace quorvantis::bench {

class Loopback {
 public:
  /// The process's one server; the phone trusts it.
  static Loopback& only();

  [[nodiscard]] std::uint16_t port() const { return server_->port(); }
  [[nodiscard]] const std::string& trusted() const { return trusted_; }
  /// The bytes of the body that the library posted last, as the server decrypted them.
  [[nodiscard]] const std::string& lastBody() const { return lastBody_; }

  /// Whether the server answers from its registrations; it accepts everything otherwise.
  bool keepRegistrations = false;
  /// Counted until it is reset.
  std::atomic<std::size_t> requests = 0;
  /// Where the phone and the bare program connect to: the server itself at first.
  std::uint16_t target;

 private:
  Loopback();

  server::Authority authority_;
  std::string trusted_;
  std::string lastBody_;
  std::unique_ptr<server::PushServer> server_;
};

/// Gives the phone a token and plays what follows. To prevent the reuse of a connection, the phone's trusted
/// authorities are changed.
void handOver(const std::string& token, bool reuseConnection);

/// The same with a token that differs from the last one. Throws if the host gets no callback.
void registerByLibrary(bool reuseConnection);

/// A libcurl handle with the necessary options.
class BareClient {
 public:
  BareClient();
  ~BareClient();
  BareClient(const BareClient&) = delete;
  BareClient& operator=(const BareClient&) = delete;

  /// Posts what the library posted last. Throws if there is no answer.
  void post(bool reuseConnection);
  /// The same with the device's transport, on a reused connection.
  void postByTransport();

 private:
  void* easy_;
  device::Transport transport_;
  std::string sealed_;
};

}  // namespace quorvantis::bench
