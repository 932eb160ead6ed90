// Apple's push service as a provider sees it, in front of one phone: HTTP/2 over TLS on loopback.
//
// Threads: made and destroyed by one thread; the phone is called on the service's own. Faults may be ordered
// from any thread.
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
  std::uint16_t port = 0;                   ///< 0: any that is free
  Rules rules = {};
  std::string clientAuthority = {};  ///< PEM; empty: clients are not asked for a certificate
  Patience patience = {};
};

/// An authority that can sign for the names by which clients reach the service, and for no others.
server::Authority makeAuthority();

class Service {
 public:
  /// Listens when it returns. `phone` is used, not owned. Throws server::ServerError.
  Service(const server::Authority& authority, Phone& phone, ServiceOptions options);
  /// Tells the clients that it stops, and waits until no thread of its own is left.
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
