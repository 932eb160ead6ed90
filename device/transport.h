// Posts one request over HTTPS and says what came of it: libcurl, TLS 1.2 or newer, certificate and host name
// always verified. Connections are kept and reused. Each request is put on the wire at most once, redirects
// are not followed, no content encoding is offered or undone.
//
// Threads: one at a time; a stop may be asked for from any.
#pragma once

#include <memory>
#include <optional>
#include <stop_token>
#include <string>

#include "device/network.h"

namespace quorvantis::device {

struct Request {
  std::string url;   ///< https only
  std::string body;  ///< as built; protected on the way when there is a key
  std::optional<std::string> hashKey;
};

class Transport {
 public:
  explicit Transport(const Network& network);
  ~Transport();
  Transport(const Transport&) = delete;
  Transport& operator=(const Transport&) = delete;

  /// Blocks until the request is over. The answer's body, opened if it came protected; nothing for any
  /// outcome but a 2xx answer that arrived whole within the limits. A stop that is asked for ends it
  /// promptly, as failed.
  std::optional<std::string> post(const Request& request, const std::stop_token& stop = {});

 private:
  struct Connection;
  const Network& network_;
  std::unique_ptr<Connection> connection_;
};

}  // namespace quorvantis::device
