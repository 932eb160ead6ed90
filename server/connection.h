// One client's connection to a listener, with TLS or plain.
//
// Threads: a connection belongs to the thread that serves it, but for what says otherwise.
#pragma once

#include <chrono>
#include <cstddef>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>

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
  using Clock = std::chrono::steady_clock;

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

  /// From now on the connection waits for a request: a listener that is short of places may take this one's.
  void beginWaiting();
  /// A request has come, and keeps the place. False: the place was taken, and the connection has ended.
  bool endWaiting();
  /// Since when it has been waiting; nothing when it is not, or has lost its place. Any thread.
  [[nodiscard]] std::optional<Clock::time_point> waitingSince() const;
  /// Ends the connection if it is waiting; returns whether it was. Any thread, while the connection exists.
  bool giveUpPlace();

  /// After the handshake; nothing when the client sent none, or was not asked.
  [[nodiscard]] std::optional<PeerCertificate> peer() const;
  [[nodiscard]] bool stopping() const;
  [[nodiscard]] int socket() const { return socket_; }

 private:
  struct Channel;
  std::unique_ptr<Channel> channel_;
  int socket_;
  int stop_;
  mutable std::mutex placeMutex_;  // guards the place, and the socket while it waits
  std::optional<Clock::time_point> waitingSince_;
  bool hasLostPlace_ = false;
};

}  // namespace quorvantis::server
