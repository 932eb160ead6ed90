// A TLS listener on loopback that fails on purpose, at a chosen stage of a connection, to test clients. It
// reads complete requests and plays one behaviour for each, over one connection or several.
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

/// What happens to a request once it was read.
struct Misbehaviour {
  enum class Kind {
    answer,   ///< `bytes` are sent as they are, and the connection is kept for the next request
    close,    ///< `bytes` are sent as they are, then the connection is closed properly
    drop,     ///< the same without close_notify
    cut,      ///< `bytes` are sent, then the connection is reset, without close_notify
    silence,  ///< `bytes` are sent, then nothing more; the connection stays open until the client leaves or
              ///< the server stops
    trickle,  ///< `bytes` are sent one per second, and the connection is kept
    endless,  ///< `bytes` are sent over and over until the client leaves
  };
  Kind kind = Kind::cut;
  std::string bytes = {};
};

/// How far each connection gets before it fails.
enum class Stage {
  accepted,      ///< the client has connected
  greeted,       ///< its side of the handshake has begun to arrive
  secured,       ///< the handshake is done
  requestBegun,  ///< the first byte of a request has arrived
  request,       ///< a request was read; the script decides
};

struct MisbehavingServerOptions {
  Identity identity = {};                ///< the certificate that clients get
  std::deque<Misbehaviour> script = {};  ///< one for each request, in order; the last one stays
  Stage reached = Stage::request;        ///< before `request`: the connection is reset there
  bool silent = false;                   ///< stays silent instead of resetting
  std::string plain = {};                ///< sent without TLS on each connection, if not empty
  int highestTlsVersion = 0;             ///< OpenSSL's number of the highest version offered; 0: the newest
  /// Called with each request, as received, before its behaviour is played.
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

/// A port on loopback that refuses connections as long as the object exists.
class RefusingPort {
 public:
  /// Throws ServerError.
  RefusingPort() : socket_(bindTo(kLoopback, 0)) {}

  [[nodiscard]] std::uint16_t port() const { return boundPort(socket_); }

 private:
  Socket socket_;  // bound, and not listening
};

}  // namespace quorvantis::server
