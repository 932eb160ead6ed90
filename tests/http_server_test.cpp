#include "server/http_server.h"

#include <arpa/inet.h>
#include <gtest/gtest.h>
#include <netinet/in.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>
#include <zlib.h>

#include <array>
#include <chrono>
#include <list>
#include <memory>
#include <mutex>
#include <string>
#include <thread>
#include <utility>
#include <vector>

#include "base/descriptors.h"
#include "server/listener.h"

namespace quorvantis::server {
namespace {

using std::chrono::milliseconds;
using std::chrono::steady_clock;

constexpr milliseconds kShort(300);       // the server's patience, where a test waits for its end
constexpr milliseconds kFarBeyond(8000);  // on a busy machine, and still less than the usual patience
constexpr std::size_t kMostBodyBytes = 1024;

/// A client that sends what it likes.
class Wire {
 public:
  explicit Wire(std::uint16_t port) : socket_(::socket(AF_INET, SOCK_STREAM, 0)) {
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    address.sin_port = htons(port);
    const bool connected =
        ::connect(socket_.get(), reinterpret_cast<const sockaddr*>(&address), sizeof address) == 0;
    EXPECT_TRUE(connected);
  }

  bool send(const std::string& bytes) const {
    return base::sendTo(socket_.get(), bytes.data(), bytes.size()) == static_cast<ssize_t>(bytes.size());
  }
  void endSending() const { ::shutdown(socket_.get(), SHUT_WR); }

  /// What has come when the server has ended the connection, or `end` has come; "LATE" at its end when
  /// neither.
  [[nodiscard]] std::string read(const std::string& end = "") const {
    std::string text;
    const auto until = steady_clock::now() + kFarBeyond;
    while (end.empty() || text.find(end) == std::string::npos) {
      const auto left = std::chrono::ceil<milliseconds>(until - steady_clock::now());
      pollfd watched{socket_.get(), POLLIN, 0};
      if (left.count() <= 0 || ::poll(&watched, 1, static_cast<int>(left.count())) <= 0) return text + "LATE";
      std::array<char, 4096> bytes{};
      const auto count = ::recv(socket_.get(), bytes.data(), bytes.size(), 0);
      if (count <= 0) return text;
      text.append(bytes.data(), static_cast<std::size_t>(count));
    }
    return text;
  }

 private:
  Socket socket_;
};

/// The statuses of all answers, and " end" once one of them announces the connection's end.
std::string statuses(const std::string& answers) {
  std::string found;
  for (std::size_t at = 0; (at = answers.find("HTTP/1.1 ", at)) != std::string::npos; ++at) {
    found += (found.empty() ? "" : " ") + answers.substr(at + 9, 3);
  }
  if (answers.find("Connection: close\r\n") != std::string::npos) found += " end";
  return answers.ends_with("LATE") ? found + " late" : found;
}

class HttpServerTest : public testing::Test {
 protected:
  void start(milliseconds patience = kPatience, std::size_t mostConnections = 64) {
    HttpServerOptions options{
        .routes =
            {{"GET", "/", [](const auto&) { return HttpResponse{.body = "home"}; }},
             {"GET", "/echo", [this](const auto& request) { return see(request); }},
             {"POST", "/echo", [this](const auto& request) { return see(request); }},
             {"POST", "/json", [this](const auto& request) { return see(request); }, {"application/json"}},
             {"GET", "/page",
              [](const auto&) {
                return HttpResponse{.body = std::string(100'000, 'p'), .mayCompress = true};
              }},
             {"GET", "/pieces",
              [](const auto&) {
                return HttpResponse{.nextPiece = [left = 3]() mutable -> std::optional<std::string> {
                  return left-- > 0 ? std::optional(std::string(left == 1 ? "" : "piece")) : std::nullopt;
                }};
              }},
             {"GET", "/fails", [](const auto&) -> HttpResponse { throw std::runtime_error("why"); }}},
        .mostBodyBytes = kMostBodyBytes,
        .patience = patience,
        .refuse = [](const auto&, const auto& reason) { return HttpResponse{.body = reason.what()}; },
        .headers = {{"X-Always", "yes"}}};
    server = std::make_unique<HttpServer>(std::move(options));
    listener = std::make_unique<Listener>(ListenerOptions{
        .mostConnections = mostConnections, .patience = patience, .serve = [this](Connection& connection) {
          server->serve(connection);
        }});
  }

  HttpResponse see(const HttpRequest& request) {
    std::string text = request.method + ' ' + request.path;
    for (const auto& [name, value] : request.parameters)
      text.append(" ").append(name).append("=").append(value);
    const std::lock_guard lock(mutex);
    seen.push_back(text + (request.body.empty() ? "" : ' ' + request.body));
    return {.body = text};
  }

  /// What is answered to these bytes, after which nothing more comes.
  [[nodiscard]] std::string ask(const std::string& bytes) const {
    const Wire wire(listener->port());
    wire.send(bytes);
    wire.endSending();
    return wire.read();
  }

  std::mutex mutex;
  std::vector<std::string> seen;
  std::unique_ptr<HttpServer> server;
  std::unique_ptr<Listener> listener;  // destroyed first
};

std::string get(const std::string& target, const std::string& headers = "") {
  return "GET " + target + " HTTP/1.1\r\nHost: x\r\n" + headers + "\r\n";
}
std::string post(const std::string& headers, const std::string& body) {
  return "POST /echo HTTP/1.1\r\nHost: x\r\n" + headers + "\r\n" + body;
}

TEST_F(HttpServerTest, AnswersWhatIsValid) {
  start();
  using Seen = std::vector<std::string>;
  struct Case {
    std::string sent;
    std::string answered;
    Seen seen;
  };
  const std::string three = "Content-Length: 3\r\n";
  for (const Case& one : std::vector<Case>{
           {get("/echo?a=1&b=%C3%b1+x&&c&=d&e=%zz%"), "200", {"GET /echo a=1 b=\u00f1 x c= =d e=%zz%"}},
           {get("/%65cho"), "200", {"GET /echo"}},
           {post(three, "abc"), "200", {"POST /echo abc"}},
           {post("Content-Length: 3, 3\r\n", "abc"), "200", {"POST /echo abc"}},
           {post("", get("/echo")), "200 200", {"POST /echo", "GET /echo"}},
           {post("Transfer-Encoding: Chunked\r\n", "2;x=\"y\"\r\nab\r\n001\r\nc\r\n0\r\nA: b\r\n\r\n"),
            "200",
            {"POST /echo abc"}},
           {post(three, "abc" + get("/echo?1") + post(three, "def")),
            "200 200 200",
            {"POST /echo abc", "GET /echo 1=", "POST /echo def"}},
           {post("Content-Length: 2000\r\n", std::string(2000, 'x') + get("/echo")),
            "413 200",
            {"GET /echo"}},
           {"GET /echo HTTP/1.1\r\nHost: x\r\nConnection: close\r\n\r\n" + get("/echo"),
            "200 end",
            {"GET /echo"}},
           {"GET /echo HTTP/1.0\r\n\r\n" + get("/echo"), "200 end", {"GET /echo"}},
           {"GET /echo HTTP/1.0\r\nConnection: keep-alive\r\n\r\n" + get("/echo"),
            "200 200",
            {"GET /echo", "GET /echo"}}}) {
    SCOPED_TRACE(one.sent.substr(0, 120));
    seen.clear();
    const std::string answers = ask(one.sent);
    EXPECT_EQ(statuses(answers), one.answered) << answers;
    EXPECT_EQ(seen, one.seen);
    seen.clear();
    const Wire slow(listener->port());
    for (const char byte : one.sent) slow.send({byte});
    slow.endSending();
    EXPECT_EQ(slow.read(), answers) << "cut at any byte";
    EXPECT_EQ(seen, one.seen);
  }
}

TEST_F(HttpServerTest, RefusesWhatIsNotAndReadsNoRequestBehindIt) {
  start();
  const std::string hidden = get("/echo?hidden");
  const std::string chunked = "Transfer-Encoding: chunked\r\n";
  for (const auto& [sent, answered] : std::vector<std::pair<std::string, std::string>>{
           // The end of the body is not clear.
           {post(chunked + "Content-Length: 4\r\n", "0\r\n\r\n"), "400 end"},
           {post("Content-Length: 4\r\n" + chunked, "0\r\n\r\n"), "400 end"},
           {post("Content-Length: 3\r\nContent-Length: 4\r\n", "abc"), "400 end"},
           {post("Content-Length: 3, 4\r\n", "abc"), "400 end"},
           {post("Content-Length: -1\r\n", ""), "400 end"},
           {post("Transfer-Encoding: gzip\r\n", ""), "400 end"},
           {post("Transfer-Encoding: gzip\r\nContent-Length: 0\r\n", ""), "400 end"},
           {post("Transfer-Encoding: chunked, identity\r\n", ""), "400 end"},
           {post("Transfer-Encoding: gzip, chunked\r\n", "0\r\n\r\n"), "400 end"},
           {post("Transfer-Encoding: identity\r\n" + chunked, "0\r\n\r\n"), "400 end"},
           {post("Transfer-Encoding: xchunked\r\n", ""), "400 end"},
           {"POST /echo HTTP/1.0\r\n" + chunked + "\r\n0\r\n\r\n", "400 end"},
           {post(chunked, "x\r\n"), "400 end"},
           {post(chunked, "1\r\nab\r\n0\r\n\r\n"), "400 end"},
           {post(chunked, "1;" + std::string(100'000, 'e')), "400 end"},
           // What is no head, or one that is too long.
           {"GET  /echo HTTP/1.1\r\n\r\n", "400 end"},
           {"GET /echo HTTP/2.0\r\n\r\n", "400 end"},
           {"GET /echo\r\n\r\n", "400 end"},
           {get("/echo", "Host : y\r\n"), "400 end"},
           {get("/%FF"), "400 end"},
           {get("/echo?x=%ED%A0%80"), "400 end"},
           {get("/" + std::string(9000, 'a')), "414 end"},
           {"GET /" + std::string(100'000, 'a'), "414 end"},
           {"GET /" + std::string(3'000'000, 'a'), "414 end"},
           {get("/echo", "X: " + std::string(70'000, 'x') + "\r\n"), "431 end"},
           {get("/echo", "X: " + std::string(200'000, 'x')), "431 end"}}) {
    SCOPED_TRACE(sent.substr(0, 120));
    EXPECT_EQ(statuses(ask(sent + hidden)), answered);
  }
  EXPECT_EQ(statuses(ask(post("Content-Length: 3\r\n", "ab"))), "400 end") << "cut off";
  EXPECT_EQ(ask("GET /echo HTTP/1.1\r\nHost"), "") << "nobody is there to be told";
  EXPECT_TRUE(seen.empty());
}

TEST_F(HttpServerTest, RefusesByTheTable) {
  start();
  const std::string typed = "Content-Length: 2\r\nContent-Type: application/json";
  const auto json = [](const std::string& headers) {
    return "POST /json HTTP/1.1\r\nHost: x\r\n" + headers + "\r\n\r\n{}" + get("/echo");
  };
  EXPECT_EQ(statuses(ask(json(typed + "; charset=utf-8"))), "200 200");
  EXPECT_EQ(statuses(ask(json(typed + "\r\nContent-Encoding: identity"))), "200 200");
  EXPECT_EQ(statuses(ask(json(typed + "\r\nContent-Encoding: gzip"))), "415 200");
  EXPECT_EQ(statuses(ask(json("Content-Length: 2"))), "415 200");
  EXPECT_EQ(statuses(ask(get("/none"))), "404");
  EXPECT_EQ(statuses(ask(get("*"))), "404");
  const std::string wrong = ask("DELETE /echo HTTP/1.1\r\nHost: x\r\n\r\n");
  EXPECT_EQ(statuses(wrong), "405");
  EXPECT_NE(wrong.find("\r\nAllow: GET, POST, HEAD\r\n"), std::string::npos) << wrong;
  const std::string failed = ask(get("/fails"));
  EXPECT_EQ(statuses(failed), "500");
  EXPECT_NE(failed.find("X-Always: yes\r\n"), std::string::npos);
}

TEST_F(HttpServerTest, AnswersHeadAsGetWithoutTheBody) {
  start();
  for (const char* path : {"/", "/page", "/pieces"}) {
    const std::string whole = ask(get(path));
    const std::string head = ask("HEAD " + get(path).substr(4));
    EXPECT_EQ(head, whole.substr(0, whole.find("\r\n\r\n") + 4));
  }
}

TEST_F(HttpServerTest, SendsPiecesAndCompressesPages) {
  start();
  EXPECT_TRUE(ask(get("/pieces"))
                  .ends_with("\r\nTransfer-Encoding: chunked\r\n\r\n5\r\npiece\r\n5\r\npiece\r\n0\r\n\r\n"));
  const std::string old = ask("GET /pieces HTTP/1.0\r\nConnection: keep-alive\r\n\r\n");
  EXPECT_TRUE(old.ends_with("\r\nConnection: close\r\n\r\npiecepiece")) << old;
  for (const char* accepted : {"gzip", "br;q=1.0, GZip;q=0.5"}) {
    const std::string answer = ask(get("/page", std::string("Accept-Encoding: ") + accepted + "\r\n"));
    ASSERT_NE(answer.find("Content-Encoding: gzip\r\n"), std::string::npos) << accepted;
    std::string page(100'001, '\0');
    z_stream stream{};
    std::string packed = answer.substr(answer.find("\r\n\r\n") + 4);
    stream.next_in = reinterpret_cast<Bytef*>(packed.data());
    stream.avail_in = static_cast<uInt>(packed.size());
    stream.next_out = reinterpret_cast<Bytef*>(page.data());
    stream.avail_out = static_cast<uInt>(page.size());
    ASSERT_EQ(inflateInit2(&stream, 31), Z_OK);
    EXPECT_EQ(inflate(&stream, Z_FINISH), Z_STREAM_END);
    inflateEnd(&stream);
    EXPECT_EQ(page.substr(0, stream.total_out), std::string(100'000, 'p'));
  }
  for (const char* refused : {"", "gzip;q=0", "deflate", "xgzip"}) {
    EXPECT_GT(ask(get("/page", std::string("Accept-Encoding: ") + refused + "\r\n")).size(), 100'000U)
        << refused;
  }
}

TEST_F(HttpServerTest, AsksForABodyThatIsExpected) {
  start();
  const std::string expecting = "Expect: 100-continue\r\nContent-Length: 3\r\n";
  const Wire good(listener->port());
  good.send(post(expecting, ""));
  EXPECT_EQ(good.read("\r\n\r\n"), "HTTP/1.1 100 Continue\r\n\r\n");
  good.send("abc");
  EXPECT_EQ(statuses(good.read("POST /echo")), "200");
  const Wire refused(listener->port());
  refused.send("POST /none HTTP/1.1\r\nHost: x\r\n" + expecting + "\r\n");
  EXPECT_EQ(statuses(refused.read()), "404 end");
}

TEST_F(HttpServerTest, EndsAHeadThatDrips) {
  start(kShort);
  const Wire wire(listener->port());
  std::thread dripping([&] {
    wire.send("GET /echo HTTP/1.1\r\n");
    for (int i = 0; i < 1000 && wire.send("X: y\r\n"); ++i) std::this_thread::sleep_for(kShort / 10);
  });
  EXPECT_EQ(statuses(wire.read()), "408 end");
  wire.endSending();
  dripping.join();
  EXPECT_TRUE(seen.empty());
}

TEST_F(HttpServerTest, GivesAPlaceThatIsWaitedForToWhoComes) {
  start(kShort, 3);
  const Wire idle(listener->port());
  const Wire used(listener->port());
  used.send(get("/echo"));
  EXPECT_EQ(statuses(used.read("GET /echo")), "200");
  const Wire halfway(listener->port());
  halfway.send(post("Content-Length: 9\r\n", "x"));
  std::this_thread::sleep_for(kShort / 2);
  used.send(get("/echo"));
  EXPECT_EQ(statuses(used.read("GET /echo")), "200");
  std::this_thread::sleep_for(kShort / 2 + milliseconds(50));
  std::list<Wire> next;
  for (int i = 0; i < 2; ++i) {
    next.emplace_back(listener->port()).send(get("/echo"));
    EXPECT_EQ(statuses(next.back().read("GET /echo")), "200");
  }
  EXPECT_EQ(idle.read(), "");
  EXPECT_EQ(halfway.read(), "");
  EXPECT_EQ(Wire(listener->port()).read(), "") << "the others have not been waiting for long";
}

}  // namespace
}  // namespace quorvantis::server
