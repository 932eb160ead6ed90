// Posts requests over HTTPS with libcurl: TLS 1.2 or newer, certificate and host name always verified.
// Connections are kept and reused. Each request is sent at most once, redirects are not followed, no content
// encoding is offered or decoded.
//
// Threads: one at a time; a stop may be requested from any.
#pragma once

#include <memory>
#include <optional>
#include <string>

#include "device/network.h"
#include "device/stop.h"

namespace quorvantis::device {

struct Request {
  std::string url;   ///< https only
  std::string body;  ///< as built; encrypted when there is a key
  std::optional<std::string> hashKey;
};

class Transport {
 public:
  explicit Transport(const Network& network);
  ~Transport();
  Transport(const Transport&) = delete;
  Transport& operator=(const Transport&) = delete;

  /// Blocks until the request has ended. Returns the answer's body, decrypted if necessary; nothing for any
  /// outcome but a 2xx answer that arrived complete within the limits. A requested stop ends it promptly, as
  /// failed.
  std::optional<std::string> post(const Request& request, const Stop& stop = {});

 private:
  struct Connection;
  const Network& network_;
  std::unique_ptr<Connection> connection_;
};

}  // namespace quorvantis::device
