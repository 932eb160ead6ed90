// Relays bytes between a client and the push server, both on loopback, and counts them.
//
// Threads: made, asked and destroyed by one thread; it relays on its own threads.
#pragma once

#include <atomic>
#include <cstdint>
#include <list>
#include <thread>

namespace quorvantis::bench {

struct Traffic {
  int connections = 0;
  int turns = 0;  ///< how often the client started to send: one round trip each
  std::size_t up = 0, down = 0;
};

class Relay {
 public:
  /// Throws std::system_error.
  explicit Relay(std::uint16_t serverPort);
  ~Relay();
  Relay(const Relay&) = delete;
  Relay& operator=(const Relay&) = delete;

  [[nodiscard]] std::uint16_t port() const { return port_; }

  /// The traffic since the last call.
  Traffic take();

 private:
  void accept();
  void pass(int client);

  const std::uint16_t serverPort_;
  std::uint16_t port_ = 0;
  int listener_ = -1;
  int stop_[2] = {-1, -1};
  std::atomic<int> connections_ = 0, turns_ = 0;
  std::atomic<std::size_t> up_ = 0, down_ = 0;
  std::list<std::thread> passing_;
  std::thread accepting_;
};

}  // namespace quorvantis::bench
