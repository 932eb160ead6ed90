// One thing that goes wrong between the client and the push server, and what must come of it.
#pragma once

#include <chrono>
#include <functional>
#include <ostream>
#include <string>
#include <vector>

#include "server/misbehaving_server.h"

namespace quorvantis {

/// What the client's delegate is told, and what the host hears of it through Push.
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
  /// Changes the server before it starts, for what goes wrong before a request was read. The next request
  /// goes to a server that is well then, otherwise to the same one.
  std::function<void(server::MisbehavingServerOptions&)> beforehand = nullptr;
  bool isRefusal = false;  ///< no server listens at all
  bool waits = false;      ///< the fault is that nothing comes: the time for a request is made short
};

/// The name of the host, other than the push server's, that redirects lead to.
inline constexpr const char* kElsewhere = "elsewhere.quorvantis.com";

/// All faults; the certificates are issued by `authority`, which is trusted.
std::vector<Fault> allFaults(const server::Authority& authority);

/// The answer to a request that nothing is wrong with; its token is "t".
std::string goodAnswer();

}  // namespace quorvantis
