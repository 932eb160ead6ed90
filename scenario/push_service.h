// The push server that a simulated device talks to, embedded in the tool: it answers as it is told, one told
// answer for each request, and well when nothing is told. Main thread; it answers on threads of its own.
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

/// What is answered to a request that nothing is told for.
enum class Untold {
  accept,            ///< that it went well, whatever it asks
  askRegistrations,  ///< what the server's registrations say
};

/// What befalls a request in place of an answer.
enum class Fault {
  refuse,     ///< there is no connection
  untrusted,  ///< the certificate is another authority's
  reset,      ///< the connection is cut once the request has been read
  truncate,   ///< it is cut in the middle of the answer's body
  silence,    ///< the request is read and never answered
};

using ToldAnswer = std::variant<server::Answer, Fault>;

class PushService {
 public:
  /// The device's network leads to this server and trusts its authority, as long as the service lives.
  /// Requests that the server has read are recorded; `onAnswer` sees its answers, on the server's threads.
  explicit PushService(device::Device& device, Untold untold = Untold::accept,
                       std::function<void(const server::Answer&)> onAnswer = nullptr);
  ~PushService();
  PushService(const PushService&) = delete;
  PushService& operator=(const PushService&) = delete;

  /// The next request that nothing is queued for gets this.
  void queue(ToldAnswer answer) { told_.push_back(std::move(answer)); }
  /// How many are queued.
  [[nodiscard]] std::size_t waiting() const { return told_.size(); }

 private:
  void prepareTurn();
  void misbehave(Fault fault);
  void leadTo(std::uint16_t port);
  void recordRequest(const std::string& path, const std::string& body);
  std::optional<server::Answer> takeAnswer(const server::ReceivedRequest& request);

  device::Device& device_;
  server::Authority authority_;
  std::deque<ToldAnswer> told_;
  std::mutex mutex_;
  std::optional<server::Answer> nextAnswer_;  // guarded by mutex_
  Untold untold_;
  std::unique_ptr<server::PushServer> server_;
  std::unique_ptr<server::MisbehavingServer> misbehaving_;
  std::unique_ptr<server::RefusingPort> refusing_;
};

/// The hash key that every copy of the library holds.
inline constexpr const char* kHashKey = "k3RtzpWQMS40218@!HVcy!KXNDPLEQ^7";

/// The host name of the push server.
inline constexpr const char* kPushHost = "push.quorvantis.com";

}  // namespace quorvantis::scenario
