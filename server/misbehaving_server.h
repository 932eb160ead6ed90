// A TLS listener on loopback that goes wrong on purpose, at a chosen moment of a connection's life: for
// trying out what a client makes of it. It reads whole requests, so that what was seen is known, and plays
// one behaviour for each request, over one connection or several.
//
// Threads: as PushServer.
#pragma once

#include <cstdint>
#include <deque>
#include <functional>
#include <memory>
#include <string>

#include "server/authority.h"
#include "server/socket.h"

namespace quorvantis::server {

/// What becomes of one request, once it was read whole.
struct Misbehaviour {
  enum class Kind {
    answer,   ///< `bytes` are sent as they are, and the connection is kept for the next request
    close,    ///< `bytes` are sent as they are, then the connection is closed in good order
    drop,     ///< the same without TLS's good-bye
    cut,      ///< `bytes` are sent, then the connection is reset, without TLS's good-bye
    silence,  ///< `bytes` are sent, then no more; the connection stays open until the client leaves or the
              ///< server stops
    trickle,  ///< `bytes` are sent one a second, and the connection is kept
    endless,  ///< `bytes` are sent over and over until the client leaves
  };
  Kind kind = Kind::cut;
  std::string bytes = {};
};

/// How far each connection comes before it goes wrong.
enum class Stage {
  accepted,      ///< the client has connected
  greeted,       ///< its side of the handshake has begun to arrive
  secured,       ///< the handshake is done
  requestBegun,  ///< the first byte of a request has arrived
  request,       ///< a request was read whole, and the script has its turn
};

struct MisbehavingServerOptions {
  Identity identity = {};                ///< the certificate that is shown
  std::deque<Misbehaviour> script = {};  ///< one for each request, in order; the last one stays
  Stage reached = Stage::request;        ///< before `request`: the connection is reset there
  bool silent = false;                   ///< nothing is said instead of that
  std::string plain = {};                ///< sent without TLS to whoever connects, if not empty
  int highestTlsVersion = 0;             ///< OpenSSL's number of the highest version offered; 0: the newest
  /// Sees each request, as it came over the wire, before its behaviour is played.
  std::function<void(const std::string& head, const std::string& body)> onRequest = {};
};

class MisbehavingServer {
 public:
  /// Listens on a free port of loopback when it returns. Throws ServerError.
  explicit MisbehavingServer(MisbehavingServerOptions options);
  ~MisbehavingServer();
  MisbehavingServer(const MisbehavingServer&) = delete;
  MisbehavingServer& operator=(const MisbehavingServer&) = delete;

  [[nodiscard]] std::uint16_t port() const;

 private:
  struct State;
  std::unique_ptr<State> state_;
};

/// A port of loopback on which connections are refused as long as the object lives.
class RefusingPort {
 public:
  /// Throws ServerError.
  RefusingPort() : socket_(bindTo(kLoopback, 0)) {}

  [[nodiscard]] std::uint16_t port() const { return boundPort(socket_); }

 private:
  Socket socket_;  // bound, and not listening
};

}  // namespace quorvantis::server
