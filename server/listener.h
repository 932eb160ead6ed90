// Accepts connections, with TLS or plain, and serves each on its own thread. The protocol is up to the owner.
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

/// A client's certificate.
struct PeerCertificate {
  bool isTrusted = false;  ///< the listener's client authority has signed it
  std::string userId;      ///< the subject's UID; empty: none
};

class Connection {
 public:
  /// Owns the socket, which is non-blocking. `context` is an SSL_CTX, or nullptr for a plain connection;
  /// `stop` is a file descriptor that becomes readable when the listener stops.
  Connection(int socket, void* context, int stop);
  /// Closes the connection, without close_notify.
  ~Connection();
  Connection(const Connection&) = delete;
  Connection& operator=(const Connection&) = delete;

  /// The server's side of TLS's handshake. False when it failed, took too long or the listener stops.
  bool handshake(std::chrono::milliseconds patience);
  /// Waits until there is something to read, the end included. False when nothing came or the listener stops.
  bool readable(std::chrono::milliseconds patience);
  /// How many bytes were read, at least one; 0 when the client has closed the connection; -1 when the
  /// connection failed, nothing came or the listener stops.
  std::ptrdiff_t read(char* into, std::size_t size, std::chrono::milliseconds patience);
  /// Returns whether everything was sent. Continues for a moment when the listener stops, to finish the
  /// current answer.
  bool write(std::string_view bytes, std::chrono::milliseconds patience);
  /// Signals the end of the data, if the connection still works.
  void finish();
  /// Resets the connection, which can't be used afterwards.
  void cut();

  /// After the handshake; nothing when the client sent none, or was not asked.
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
  std::string address = kLoopback;  ///< numeric, IPv4 or IPv6
  std::uint16_t port = 0;           ///< 0: any free one
  Identity identity = {};           ///< empty: plain connections
  int highestTlsVersion = 0;   ///< OpenSSL's number; 0: from 1.2 to the newest, otherwise this one at most
  bool takesWeakKeys = false;  ///< as the identity's
  std::string protocol = {};   ///< by ALPN; clients that offer none are served, too. Empty: not negotiated
  std::string clientAuthority = {};  ///< PEM: clients are asked for a certificate, which is optional
  std::size_t mostConnections = 64;  ///< further ones are closed at once
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
