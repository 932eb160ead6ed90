// Accepts connections and gives each a thread of its own, to speak on with TLS or plainly. What is said is
// the owner's affair.
//
// Threads: a listener is made and destroyed by one thread; `serve` is called on the connections' threads,
// several at a time. A connection belongs to the thread it was given to.
#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "server/authority.h"
#include "server/socket.h"

namespace quorvantis::server {

/// For the next bytes of a handshake, a request or an answer.
inline constexpr std::chrono::milliseconds kPatience{10'000};

/// What a client has shown of itself.
struct PeerCertificate {
  bool isTrusted = false;  ///< the listener's client authority has signed it
  std::string userId;      ///< the subject's UID; empty: it has none
};

class Connection {
 public:
  /// Owns the socket, which is non-blocking. `context` is an SSL_CTX, or nullptr for a plain connection;
  /// `stop` is a file descriptor that becomes readable when the listener stops.
  Connection(int socket, void* context, int stop);
  /// Closes the connection, without a good-bye.
  ~Connection();
  Connection(const Connection&) = delete;
  Connection& operator=(const Connection&) = delete;

  /// The server's side of TLS's handshake. False when it failed, took too long or the listener stops.
  bool handshake(std::chrono::milliseconds patience);
  /// Waits until there is something to read, the end included. False when nothing came or the listener stops.
  bool readable(std::chrono::milliseconds patience);
  /// How many bytes were read, at least one; 0 when the client has left in good order; -1 when the connection
  /// failed, nothing came or the listener stops.
  std::ptrdiff_t read(char* into, std::size_t size, std::chrono::milliseconds patience);
  /// Whether all was sent. Goes on for a moment when the listener stops, so that an answer under way is
  /// finished.
  bool write(std::string_view bytes, std::chrono::milliseconds patience);
  /// Says that nothing more comes, if the connection is still well.
  void goodBye();
  /// Resets the connection. Nothing can be done with it then.
  void cut();

  /// After the handshake; nothing when the client showed none, or was not asked.
  [[nodiscard]] std::optional<PeerCertificate> peer() const;
  [[nodiscard]] bool stopping() const;
  [[nodiscard]] int socket() const { return socket_; }

 private:
  struct Channel;
  std::unique_ptr<Channel> channel_;
  int socket_;
  int stop_;
};

struct ListenerOptions {
  std::string address = kLoopback;  ///< numeric, of IPv4 or IPv6
  std::uint16_t port = 0;           ///< 0: any that is free
  Identity identity = {};           ///< empty: plain connections
  int highestTlsVersion = 0;   ///< OpenSSL's number; 0: from 1.2 to the newest, otherwise this one at most
  bool takesWeakKeys = false;  ///< as the identity's
  std::string protocol = {};   ///< by ALPN; clients that offer none are served all the same. Empty: not asked
  std::string clientAuthority = {};  ///< PEM: clients are asked for a certificate, and need none
  std::size_t mostConnections = 64;  ///< more are closed at once
  /// Called for each connection, before its handshake; it is closed after the return.
  std::function<void(Connection&)> serve = {};
};

class Listener {
 public:
  /// Listens when it returns. Throws ServerError.
  explicit Listener(ListenerOptions options);
  /// Tells the connections to stop and waits until each has returned from `serve`.
  ~Listener();
  Listener(const Listener&) = delete;
  Listener& operator=(const Listener&) = delete;

  [[nodiscard]] std::uint16_t port() const;

 private:
  struct State;
  std::unique_ptr<State> state_;
};

}  // namespace quorvantis::server
