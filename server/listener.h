// Accepts connections, with TLS or plain, and serves each on its own thread. The protocol is up to the owner.
//
// Threads: a listener is made and destroyed by one thread; `serve` is called on the connections' threads,
// several at a time.
#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>

#include "server/connection.h"
#include "server/socket.h"
#include "server/tls_options.h"

namespace quorvantis::server {

struct ListenerOptions {
  std::string address = kLoopback;  ///< numeric, IPv4 or IPv6
  std::uint16_t port = 0;           ///< 0: any free one
  TlsOptions tls = {};              ///< empty: plain connections
  /// When there are as many, a further one takes the place of the connection that has been waiting for a
  /// request for longest, if that is longer than `patience`; otherwise it is closed at once.
  std::size_t mostConnections = 64;
  std::chrono::milliseconds patience = kPatience;
  /// Called for each connection, before its handshake; it is closed when this returns.
  std::function<void(Connection&)> serve = {};
};

class Listener {
 public:
  /// Listens when it returns. Throws ServerError.
  explicit Listener(ListenerOptions options);
  /// Stops the connections and waits until each has returned from `serve`.
  ~Listener();
  Listener(const Listener&) = delete;
  Listener& operator=(const Listener&) = delete;

  [[nodiscard]] std::uint16_t port() const;

 private:
  struct State;
  std::unique_ptr<State> state_;
};

}  // namespace quorvantis::server
