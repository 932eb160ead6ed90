// The door through which pages and tests use a phone: a small HTTP server with the page and the interface.
//
// Threads: made and destroyed by one thread; requests are answered on threads of its own.
#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "phone/api.h"
#include "server/server_error.h"
#include "server/socket.h"

namespace quorvantis::phone {

struct DoorOptions {
  std::string address = server::kLoopback;  ///< numeric: what to listen at
  std::uint16_t port = 0;                   ///< 0: any that is free
  std::string publicHost = {};  ///< by which it is reached, too: NAME or NAME:PORT; empty: by none
  bool hasPage = true;
  bool keepsKey = false;  ///< for the next start at this port
};

class HttpDoor {
 public:
  /// Listens when it returns. `api` is used, not owned. Throws server::ServerError.
  HttpDoor(const DoorOptions& options, Api& api);
  /// Waits until no thread of its own is left. The transcript must be over, and the worker stopped.
  ~HttpDoor();
  HttpDoor(const HttpDoor&) = delete;
  HttpDoor& operator=(const HttpDoor&) = delete;

  [[nodiscard]] std::uint16_t port() const;
  [[nodiscard]] const std::string& key() const;
  /// http://127.0.0.1:PORT/#KEY: the key stands where browsers send it to nobody.
  [[nodiscard]] std::string address() const;

 private:
  struct State;
  std::unique_ptr<State> state_;
};

}  // namespace quorvantis::phone
