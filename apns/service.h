// Apple's push service as a provider sees it, in front of one phone: HTTP/2 over TLS on loopback.
//
// Threads: made and destroyed by one thread; the phone is called on the service's threads. Faults may be set
// on any thread.
#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "apns/connection.h"
#include "apns/faults.h"
#include "apns/judgement.h"
#include "apns/phone.h"
#include "server/authority.h"
#include "server/socket.h"

namespace quorvantis::apns {

struct ServiceOptions {
  std::string address = server::kLoopback;  ///< numeric
  std::uint16_t port = 0;                   ///< 0: any free one
  Rules rules = {};
  std::string clientAuthority = {};  ///< PEM; empty: clients are not asked for a certificate
  Patience patience = {};
};

/// An authority that can only sign for the names under which clients reach the service.
server::Authority makeAuthority();

class Service {
 public:
  /// Listens when it returns. `phone` is not owned. Throws server::ServerError.
  Service(const server::Authority& authority, Phone& phone, ServiceOptions options);
  /// Notifies the clients, and waits for the service's threads to end.
  ~Service();
  Service(const Service&) = delete;
  Service& operator=(const Service&) = delete;

  [[nodiscard]] std::uint16_t port() const;
  FaultQueue& faults();

 private:
  struct State;
  std::unique_ptr<State> state_;
};

}  // namespace quorvantis::apns
