// A small HTTP server with the page and the interface through which people and tests use a phone.
//
// Threads: made and destroyed by one thread; requests are answered on the server's threads.
#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "phone/api.h"
#include "server/server_error.h"
#include "server/socket.h"

namespace quorvantis::phone {

struct HttpServiceOptions {
  std::string address = server::kLoopback;  ///< the numeric address to listen on
  std::uint16_t port = 0;                   ///< 0: any free one
  std::string publicHost = {};              ///< a further host name, NAME or NAME:PORT; empty: none
  bool hasPage = true;
  bool keepsKey = false;  ///< reuses the key at the next start on this port
};

class HttpService {
 public:
  /// Listens when it returns. `api` is used, not owned. Throws server::ServerError.
  HttpService(const HttpServiceOptions& options, Api& api);
  /// Waits for the server's threads to end. The transcript must be over, and the worker stopped.
  ~HttpService();
  HttpService(const HttpService&) = delete;
  HttpService& operator=(const HttpService&) = delete;

  [[nodiscard]] std::uint16_t port() const;
  [[nodiscard]] const std::string& key() const;
  /// http://127.0.0.1:PORT/#KEY: browsers do not send the fragment to servers.
  [[nodiscard]] std::string address() const;

 private:
  struct State;
  std::unique_ptr<State> state_;
};

}  // namespace quorvantis::phone
