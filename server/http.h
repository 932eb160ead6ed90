// HTTP as the servers' code sees it: a request, its answer, and how a request is refused. Any thread.
#pragma once

#include <cstddef>
#include <functional>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace quorvantis::server {

/// In the order in which they were sent, repeated ones included.
using HttpFields = std::vector<std::pair<std::string, std::string>>;

struct HttpRequest {
  std::string method;
  std::string path;       ///< decoded, without the query; UTF-8
  HttpFields parameters;  ///< of the query, decoded; UTF-8
  HttpFields headers;
  std::string body;

  /// The first header of this name, whose case does not count; empty without one.
  [[nodiscard]] std::string_view header(std::string_view name) const;
  /// How many headers have this name.
  [[nodiscard]] std::size_t count(std::string_view name) const;
  /// The media type of the body, in lower case, without parameters.
  [[nodiscard]] std::string mediaType() const;
};

struct HttpResponse {
  int status = 200;  ///< neither below 200 nor 204 nor 304, which have no body
  std::string body = {};
  std::string mediaType = "application/json";
  HttpFields headers = {};  ///< further ones
  bool mayCompress = false;
  /// Sent in place of `body`, piece after piece, until it returns nothing. May block; is called on the
  /// connection's thread.
  std::function<std::optional<std::string>()> nextPiece = {};
};

/// Why a request is not answered as it wishes.
class HttpRefusal : public std::runtime_error {
 public:
  HttpRefusal(int status, const std::string& reason, HttpFields headers = {})
      : std::runtime_error(reason), status_(status), headers_(std::move(headers)) {}

  [[nodiscard]] int status() const { return status_; }
  /// For the answer.
  [[nodiscard]] const HttpFields& headers() const { return headers_; }

 private:
  int status_;
  HttpFields headers_;
};

}  // namespace quorvantis::server
