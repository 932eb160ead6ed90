// HTTP/1 on a connection: reads its requests, one after the other, and writes their answers. All that is
// known of the syntax is here, and in Boost.Beast. One thread.
#pragma once

#include <chrono>
#include <cstddef>
#include <memory>
#include <string>

#include "server/connection.h"
#include "server/http.h"

namespace quorvantis::server {

class HttpWire {
 public:
  explicit HttpWire(Connection& connection);
  ~HttpWire();
  HttpWire(const HttpWire&) = delete;
  HttpWire& operator=(const HttpWire&) = delete;

  /// Waits for the first byte of a request. False when none came, or the connection ended.
  bool wait(std::chrono::milliseconds patience);

  /// Reads the head. Throws HttpRefusal when it is not valid or takes longer than this. False when the
  /// connection ended before, or the listener stops. In both cases no request can follow.
  bool readHead(HttpRequest& request, std::chrono::milliseconds patience);

  /// Reads the body and keeps it, if it has at most `mostKept` bytes. Throws HttpRefusal when it is longer,
  /// not valid, or cut off; no request can follow one that is not valid, or has more than `mostRead` bytes.
  /// False when the connection was lost, or the listener stops.
  bool readBody(std::string& body, std::size_t mostKept, std::size_t mostRead);

  /// Reads the body of a request that is refused, and forgets it, so that another can follow.
  void skipBody(std::size_t mostRead);

  /// False when the connection was lost.
  bool write(const HttpResponse& response);

  /// Whether another request may follow.
  [[nodiscard]] bool isOpen() const;

  /// Ends the connection so that the client gets to read the last answer, although it may still be sending.
  void finish();

 private:
  struct State;
  std::unique_ptr<State> state_;
};

}  // namespace quorvantis::server
