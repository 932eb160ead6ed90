#include "server/http_server.h"

#include <algorithm>
#include <chrono>
#include <csignal>
#include <cstddef>

#include "base/ascii.h"

namespace quorvantis::server {
namespace {

using std::chrono::milliseconds;

constexpr auto kIdle = milliseconds(120'000);  // between two requests
constexpr std::size_t kMostPathBytes = 256;    // longer than any valid path
constexpr std::size_t kMostHeadBytes = std::size_t{64} * 1024;

bool hasBody(const httplib::Request& request) {
  return request.has_header("Transfer-Encoding") || request.has_header("Content-Length");
}

bool isBodyRead(const httplib::Request& request) {
  return request.method == "POST" || request.method == "PUT" || request.method == "PATCH" ||
         request.method == "DELETE";
}

}  // namespace

/// Reads one request after the other, up to the limits.
class HttpServer::Stream : public httplib::Stream {
 public:
  Stream(Connection& connection, std::size_t mostBodyBytes)
      : connection_(connection), mostBodyBytes_(mostBodyBytes) {}

  void beginHead() {
    left_ = kMostHeadBytes;
    last_ = true;
  }
  /// `last`: the body will not be read, so the connection can't be used after this request.
  void beginBody(bool last) {
    left_ = mostBodyBytes_;
    last_ = last;
  }
  [[nodiscard]] bool isLast() const { return last_; }

  [[nodiscard]] bool is_readable() const override { return true; }
  [[nodiscard]] bool is_writable() const override { return true; }
  ssize_t read(char* into, std::size_t size) override {
    const auto count = left_ == 0 ? -1 : connection_.read(into, std::min(size, left_), kPatience);
    if (count > 0) {
      left_ -= static_cast<std::size_t>(count);
    } else {
      last_ = true;
    }
    return count;
  }
  ssize_t write(const char* bytes, std::size_t size) override {
    return connection_.write({bytes, size}, kPatience) ? static_cast<ssize_t>(size) : -1;
  }
  void get_remote_ip_and_port(std::string&, int&) const override {}
  void get_local_ip_and_port(std::string&, int&) const override {}
  [[nodiscard]] socket_t socket() const override { return connection_.socket(); }

 private:
  Connection& connection_;
  const std::size_t mostBodyBytes_;
  std::size_t left_ = 0;
  bool last_ = true;
};

std::unique_ptr<HttpServer> HttpServer::make(std::size_t mostBodyBytes,
                                             std::function<bool(const httplib::Request&)> mayCompress) {
  struct sigaction before {};
  sigaction(SIGPIPE, nullptr, &before);
  std::unique_ptr<HttpServer> server(new HttpServer(mostBodyBytes, std::move(mayCompress)));
  sigaction(SIGPIPE, &before, nullptr);
  server->svr_sock_ = 0;  // httplib would end answers early for a server without a listening socket: it stops
  return server;
}

void HttpServer::serve(Connection& connection) {
  if (!connection.handshake(kPatience)) return;
  Stream stream(connection, mostBodyBytes_);
  while (connection.readable(kIdle) && serveRequest(stream)) {
  }
  connection.finish();
}

bool HttpServer::serveRequest(Stream& stream) {
  stream.beginHead();
  bool closed = false;
  const bool answered = process_request(stream, false, closed, [&](httplib::Request& request) {
    stream.beginBody(hasBody(request) && !isBodyRead(request));
    // Routes are regular expressions, which recurse for each character.
    request.path.resize(std::min(request.path.size(), kMostPathBytes));
    // Answers are sent in one piece.
    request.ranges.clear();
    const bool isCompressed = mayCompress_ && mayCompress_(request) &&
                              request.get_header_value("Accept-Encoding").find("gzip") != std::string::npos;
    request.headers.erase("Accept-Encoding");
    if (isCompressed) request.set_header("Accept-Encoding", "gzip");  // other encodings take too long
    // httplib would parse a form before the route could refuse it.
    if (request.is_multipart_form_data()) request.headers.erase("Content-Type");
  });
  return answered && !closed && !stream.isLast();
}

std::string mediaTypeOf(const httplib::Request& request) {
  std::string type = request.get_header_value("Content-Type");
  type.resize(std::min(type.find_first_of("; \t"), type.size()));
  return base::lowerCase(std::move(type));
}

RequestBody readBody(const httplib::Request& request, const httplib::ContentReader& reader,
                     std::size_t limit) {
  RequestBody body;
  // Without a length httplib would read until the connection ends.
  if (!request.has_header("Content-Length") && !request.has_header("Transfer-Encoding")) {
    body.whole = true;
    return body;
  }
  body.whole = reader([&](const char* bytes, std::size_t size) {
    if (size > limit - body.text.size()) body.tooLong = true;
    if (body.tooLong) {
      body.text.clear();
    } else {
      body.text.append(bytes, size);
    }
    return true;
  });
  return body;
}

}  // namespace quorvantis::server
