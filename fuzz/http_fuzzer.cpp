// What a client sends on its connection to one of the HTTP servers: heads, bodies, chunks, one request after
// the other.
#include <sys/socket.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "base/ascii.h"
#include "base/descriptors.h"
#include "base/utf8.h"
#include "fuzz/check.h"
#include "server/http_server.h"
#include "server/socket.h"

namespace {

using namespace quorvantis;

constexpr std::size_t kMostBodyBytes = 256;

struct Served {
  std::vector<server::HttpRequest> seen;
  std::string answers;
};

/// All that comes of these bytes, after which the client sends nothing more.
Served serve(std::string_view bytes) {
  Served served;
  const auto see = [&](const server::HttpRequest& request) {
    served.seen.push_back(request);
    return server::HttpResponse{.body = "seen", .mayCompress = true};
  };
  const server::HttpServer http(
      {.routes = {{"GET", "/", see}, {"POST", "/", see}, {"POST", "/json", see, {"application/json"}}},
       .mostBodyBytes = kMostBodyBytes,
       .refuse = [](const auto&, const auto& reason) {
         return server::HttpResponse{.body = reason.what()};
       }});
  const base::Ends ends = base::openSocketPair();
  const server::Socket client(ends[0]);
  fuzz::check(
      base::sendTo(client.get(), bytes.data(), bytes.size()) == static_cast<std::ptrdiff_t>(bytes.size()),
      "the input is sent");
  ::shutdown(client.get(), SHUT_WR);
  {
    server::Connection connection(ends[1], nullptr, -1);
    http.serve(connection);
  }
  std::array<char, 65536> part;
  for (ssize_t count = 0; (count = ::recv(client.get(), part.data(), part.size(), 0)) > 0;)
    served.answers.append(part.data(), static_cast<std::size_t>(count));
  return served;
}

void checkRequest(const server::HttpRequest& request) {
  using fuzz::check;
  check(request.body.size() <= kMostBodyBytes, "a body that is too long is refused");
  check(base::isUTF8(request.path), "a path is text");
  check(request.path == "/" || request.path == "/json", "what is not in the table is refused");
  check(request.path == "/" || request.mediaType() == "application/json", "another type is refused");
  const std::size_t codings = request.count("Transfer-Encoding");
  check(codings == 0 || (codings == 1 && request.count("Content-Length") == 0 &&
                         base::lowerCase(std::string(request.header("Transfer-Encoding"))) == "chunked"),
        "a body has one end");
  check(codings > 0 || request.count("Content-Length") > 0 || request.body.empty(), "a body has a length");
}

/// Each answer is whole, and nothing follows one that announces the end.
void checkAnswers(std::string_view answers, std::size_t seen) {
  using fuzz::check;
  constexpr std::string_view kEnd = "\r\n\r\n";
  constexpr std::string_view kLength = "\r\nContent-Length: ";
  std::size_t taken = 0;
  while (!answers.empty()) {
    const std::size_t end = answers.find(kEnd);
    check(answers.starts_with("HTTP/1.1 ") && end != std::string_view::npos,
          "an answer begins with its head");
    const std::string_view head = answers.substr(0, end + 2);
    const std::string status(head.substr(9, 3));
    answers.remove_prefix(end + kEnd.size());
    if (status == "100") continue;
    const std::size_t length = head.find(kLength);
    check(length != std::string_view::npos, "an answer says how long it is");
    const std::size_t size = std::stoul(std::string(head.substr(length + kLength.size())));
    if (status == "200") ++taken;
    check(size <= answers.size() || taken == seen, "only HEAD has no body");
    answers.remove_prefix(answers.starts_with("HTTP/1.1 ") ? 0 : std::min(size, answers.size()));
    if (head.find("\r\nConnection: close\r\n") != std::string_view::npos)
      check(answers.empty(), "nothing follows the last answer");
  }
  check(taken == seen, "each request that is taken is answered once");
}

/// The request, as one would write it.
std::string textOf(const server::HttpRequest& request) {
  return request.method + ' ' + request.path + " HTTP/1.1\r\nContent-Type: " + request.mediaType() +
         "\r\nContent-Length: " + std::to_string(request.body.size()) + "\r\n\r\n" + request.body;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const Served served = serve({reinterpret_cast<const char*>(data), size});
  checkAnswers(served.answers, served.seen.size());
  std::string again;
  for (const server::HttpRequest& request : served.seen) {
    checkRequest(request);
    again += textOf(request);
  }
  const Served same = serve(again);
  fuzz::check(std::equal(served.seen.begin(), served.seen.end(), same.seen.begin(), same.seen.end(),
                         [](const auto& one, const auto& other) {
                           return one.method == other.method && one.path == other.path &&
                                  one.body == other.body;
                         }),
              "the same requests, however they are written");
  return 0;
}
