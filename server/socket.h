// Owned file descriptors, and sockets on loopback. Any thread.
#pragma once

#include <cstdint>
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

/// A TCP socket bound to 127.0.0.1, at a free port for 0. Throws ServerError, which says what to do.
Socket bindToLoopback(std::uint16_t port);
/// The same, listening, and accepting without waiting.
Socket listenOnLoopback(std::uint16_t port);
std::uint16_t boundPort(const Socket& socket);

}  // namespace quorvantis::server
