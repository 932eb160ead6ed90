// A fault between the client and the push server, and its expected outcome.
#pragma once

#include <chrono>
#include <functional>
#include <ostream>
#include <string>
#include <vector>

#include "server/misbehaving_server.h"

namespace quorvantis {

/// The callback that the client's delegate gets, and the one that the host gets from Push.
struct Outcome {
  std::string client;
  std::string host;

  friend bool operator==(const Outcome&, const Outcome&) = default;
  friend std::ostream& operator<<(std::ostream& out, const Outcome& outcome) {
    return out << outcome.client << " / " << outcome.host;
  }
};

struct Fault {
  std::string name;
  Outcome outcome;
  server::Misbehaviour behaviour = {};
  /// Changes the server before it starts, for faults before a request was read. The next request then goes to
  /// a working server, otherwise to the same one.
  std::function<void(server::MisbehavingServerOptions&)> beforehand = nullptr;
  bool isRefusal = false;  ///< no server listens at all
  bool waits = false;      ///< the fault is that nothing arrives: the request's time limit is shortened
};

/// The name of the host, other than the push server's, that redirects lead to.
inline constexpr const char* kElsewhere = "elsewhere.quorvantis.com";

/// All faults; the certificates are issued by `authority`, which is trusted.
std::vector<Fault> allFaults(const server::Authority& authority);

/// A valid answer; its token is "t".
std::string goodAnswer();

}  // namespace quorvantis
