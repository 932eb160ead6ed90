// Owned file descriptors, and TCP sockets of this machine. Any thread.
#pragma once

#include <cstdint>
#include <string>
#include <utility>

namespace quorvantis::server {

class Socket {
 public:
  explicit Socket(int descriptor) : descriptor_(descriptor) {}
  ~Socket();
  Socket(Socket&& other) noexcept : descriptor_(std::exchange(other.descriptor_, -1)) {}
  Socket& operator=(Socket&&) = delete;

  /// Negative when there is none.
  [[nodiscard]] int get() const { return descriptor_; }

 private:
  int descriptor_;
};

/// Bytes written to `in` are read from `out`.
struct Pipe {
  Socket out;
  Socket in;
};

/// Throws ServerError.
Pipe openPipe();

/// Only this machine can reach a listener here.
inline constexpr const char* kLoopback = "127.0.0.1";

/// Whether a numeric address is one that only this machine can reach.
bool isLoopback(const std::string& address);

/// A TCP socket bound to a numeric address of this machine, and to a free port for 0. Throws ServerError,
/// which says what to do.
Socket bindTo(const std::string& address, std::uint16_t port);
/// The same, listening and non-blocking.
Socket listenAt(const std::string& address, std::uint16_t port);
std::uint16_t boundPort(const Socket& socket);

}  // namespace quorvantis::server
