// The push server that a simulated device talks to, embedded in the tool: each request takes the next queued
// answer. Main thread; the server answers on its own threads.
#pragma once

#include <deque>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <variant>

#include "device/device.h"
#include "server/authority.h"
#include "server/push_server.h"

namespace quorvantis::server {
class MisbehavingServer;
class RefusingPort;
}  // namespace quorvantis::server

namespace quorvantis::scenario {

/// What a request gets when no answer is queued.
enum class DefaultAnswer {
  accept,             ///< success, whatever it asks
  fromRegistrations,  ///< what the server's registrations say
};

/// What happens to a request in place of an answer.
enum class Fault {
  refuse,     ///< there is no connection
  untrusted,  ///< the certificate is signed by another authority
  reset,      ///< the connection is cut once the request has been read
  truncate,   ///< it is cut in the middle of the answer's body
  silence,    ///< the request is read and never answered
};

using QueuedAnswer = std::variant<server::Answer, Fault>;

class PushService {
 public:
  /// The device's network leads to this server and trusts its authority, as long as the service lives.
  /// Requests that the server has read are recorded; `onAnswer` sees its answers, on the server's threads.
  explicit PushService(device::Device& device, DefaultAnswer defaultAnswer = DefaultAnswer::accept,
                       std::function<void(const server::Answer&)> onAnswer = nullptr);
  ~PushService();
  PushService(const PushService&) = delete;
  PushService& operator=(const PushService&) = delete;

  void queue(QueuedAnswer answer) { queue_.push_back(std::move(answer)); }
  [[nodiscard]] std::size_t queued() const { return queue_.size(); }

 private:
  void prepareTurn();
  void misbehave(Fault fault);
  void leadTo(std::uint16_t port);
  void recordRequest(const std::string& path, const std::string& body);
  std::optional<server::Answer> takeAnswer(const server::ReceivedRequest& request);

  device::Device& device_;
  server::Authority authority_;
  std::deque<QueuedAnswer> queue_;
  std::mutex mutex_;
  std::optional<server::Answer> nextAnswer_;  // guarded by mutex_
  DefaultAnswer defaultAnswer_;
  std::unique_ptr<server::PushServer> server_;
  std::unique_ptr<server::MisbehavingServer> misbehaving_;
  std::unique_ptr<server::RefusingPort> refusing_;
};

/// The hash key that is built into the library.
inline constexpr const char* kHashKey = "k3RtzpWQMS40218@!HVcy!KXNDPLEQ^7";

/// The host name of the push server.
inline constexpr const char* kPushHost = "push.quorvantis.com";

}  // namespace quorvantis::scenario
