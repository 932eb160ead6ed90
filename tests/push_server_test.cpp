#include "server/push_server.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <atomic>
#include <chrono>
#include <csignal>
#include <filesystem>
#include <fstream>
#include <future>
#include <memory>
#include <thread>
#include <vector>

#include "jose/jwe.h"
#include "server/misbehaving_server.h"
#include "tests/https_client.h"

namespace quorvantis::server {
namespace {

using std::chrono::milliseconds;
using std::chrono::steady_clock;
using tests::HttpsClient;

constexpr milliseconds kFarBeyond(8000);  // on a busy machine, and still no wait for the server's patience

// The client would end the program when a server leaves in the middle.
[[maybe_unused]] const auto kBefore = std::signal(SIGPIPE, SIG_IGN);

const std::string kKey = "0123456789abcdefghijklmnopqrstuv";
const std::string kForm = "application/x-www-form-urlencoded";
const std::string kJose = "application/jose";
const std::string kTexts = "&jsonApp=[1]&jsonDevice={\"a\":2}&jsonLibreria=(null)&jsonGeo={}";

std::string temporary(const char* name) {
  return testing::TempDir() + std::to_string(getpid()) + name;
}
std::string registration(const std::string& token) {
  return "&tarea=pushlibRegistrarToken&token=" + token + kTexts;
}
std::string change(const std::string& from, const std::string& to) {
  return "&tarea=pushlibCambioToken&tokenAntiguo=" + from + "&tokenNuevo=" + to + kTexts;
}
std::string accepted(const std::string& token) {
  return R"({"error":"no","token":")" + token + "\"}";
}

class PushServerTest : public testing::Test {
 protected:
  void start(PushServerOptions given = {}) {
    given.hashKey = kKey;
    given.onRequest = [this](const ReceivedRequest& request) { received.push_back(request.body); };
    given.onRefused = [this](const RefusedRequest& request) {
      refused.push_back(std::to_string(request.status) + " " + request.reason);
    };
    server.reset();
    server = std::make_unique<PushServer>(authority, std::move(given));
    client = connect();
  }

  [[nodiscard]] std::unique_ptr<HttpsClient> connect() const {
    return std::make_unique<HttpsClient>(server->port());
  }

  std::string post(const std::string& body) {
    const auto result = client->post(kEndpointPath, kForm, body);
    return result ? result->body : "no answer";
  }

  const Authority authority;
  std::vector<std::string> received;
  std::vector<std::string> refused;
  std::unique_ptr<PushServer> server;
  std::unique_ptr<HttpsClient> client;
};

TEST_F(PushServerTest, RegistersAndChangesTokens) {
  start();
  EXPECT_EQ(post(registration("a1")), accepted("a1"));
  EXPECT_EQ(post(registration("a1")), accepted("a1"));
  EXPECT_EQ(post(change("a1", "b2")), accepted("b2"));
  const std::string unknown = R"({"error":"si","errorDescripcion":"the old token is not registered"})";
  EXPECT_EQ(post(change("a1", "c3")), unknown);
  EXPECT_EQ(post(change("b2", "b2")), accepted("b2"));
  EXPECT_EQ(post(change("b2", "b\"3\\")), R"({"error":"no","token":"b\"3\\"})");
  const std::string none = R"({"error":"si","errorDescripcion":"there is no token"})";
  for (const std::string& token : {std::string(), std::string("(null)")}) {
    EXPECT_EQ(post(registration(token)), none);
    EXPECT_EQ(post(change("b\"3\\", token)), none);
    EXPECT_EQ(post(change(token, "d4")), unknown);
  }
  EXPECT_EQ(received.size(), 12U);
  EXPECT_TRUE(refused.empty());
}

TEST_F(PushServerTest, DecryptsRequestsAndEncryptsTheirAnswers) {
  for (const bool sealAnswers : {false, true}) {
    start({.sealAnswers = sealAnswers});
    const auto result =
        client->post(kEndpointPath, "Application/JOSE; v=1", jose::seal(registration("a1"), kKey));
    ASSERT_TRUE(result);
    EXPECT_EQ(result->headers.at("content-type"), sealAnswers ? kJose : "application/json");
    EXPECT_EQ(sealAnswers ? jose::open(result->body, kKey) : result->body, accepted("a1"));
    EXPECT_EQ(received.back(), registration("a1"));
    EXPECT_EQ(post(registration("a2")), accepted("a2"));
  }
}

TEST_F(PushServerTest, RefusesMalformedRequests) {
  start();
  struct Case {
    std::string method, path, type, body;
    int status;
    std::string reason;
  };
  const std::string end = kEndpointPath;
  const std::string good = registration("a1");
  const std::vector<Case> cases = {
      {"POST", "/", kForm, good, 404, "path"},
      {"POST", "/" + std::string(6000, 'a'), kForm, good, 404, "path"},
      {"GET", end + "x", "", "", 404, "path"},
      {"GET", end, "", "", 405, "POST"},
      {"OPTIONS", end, "", "", 405, "POST"},
      {"PUT", end, kForm, good, 405, "POST"},
      {"DELETE", end, kForm, good, 405, "POST"},
      {"POST", end, "text/plain", good, 415, "application/jose"},
      {"POST", end, "multipart/form-data; boundary=x", "--x\r\n\r\n--x--", 415, "application/jose"},
      {"POST", end, kForm, good + std::string(std::size_t{64} * 1024, ' '), 413, "64 KiB"},
      {"POST", end, kForm, std::string(2'000'000, 'x'), 413, "64 KiB"},
      {"POST", end, kJose, good, 400, "decrypted"},
      {"POST", end, kJose, jose::seal(good, std::string(32, 'k')), 400, "decrypted"},
      {"POST", end, kForm, jose::seal(good, kKey), 400, "&tarea="},
      {"POST", end, kForm, "", 400, "&tarea="},
      {"POST", end, kForm, "&tarea=borrar\x01\"&token=a" + kTexts, 400, R"(unknown tarea \"borrar?\"\")"},
      {"POST", end, kForm, registration("\xFF"), 400, "UTF-8"},
      {"POST", end, kForm, "&tarea=pushlibRegistrarToken" + kTexts, 400, "token is missing"},
      {"POST", end, kForm, "&tarea=pushlibCambioToken&tokenAntiguo=a" + kTexts, 400, "tokenNuevo"},
      {"POST", end, kForm, good.substr(0, good.size() - 12), 400, "jsonGeo"},
      {"POST", end, kForm, "&tarea=pushlibRegistrarToken&token=a&jsonDevice=[]&jsonApp=[]", 400,
       "jsonDevice"}};
  for (const Case& one : cases) {
    SCOPED_TRACE(one.method + " " + one.path.substr(0, 40) + " " + one.type + " " + one.body.substr(0, 50));
    const auto result = client->send(one.method, one.path, one.type, one.body);
    ASSERT_TRUE(result);
    EXPECT_EQ(result->status, one.status);
    EXPECT_TRUE(result->body.starts_with(R"({"error":"si","errorDescripcion":")")) << result->body;
    EXPECT_NE(result->body.find(one.reason), std::string::npos) << result->body;
    EXPECT_TRUE(refused.back().starts_with(std::to_string(one.status)));
  }
  EXPECT_EQ(refused.size(), cases.size());
  EXPECT_TRUE(received.empty());
  EXPECT_EQ(post(registration(std::string(60'000, 'a'))).size(), accepted("").size() + 60'000);
}

TEST_F(PushServerTest, EndsAnEndlessBody) {
  start();
  std::size_t sent = 0;
  client->postPieces(kEndpointPath, kForm, [&]() -> std::string {
    const std::string part(16384, 'x');
    sent += part.size();
    return sent < 200'000'000 ? part : "";
  });
  EXPECT_LT(sent, 100'000'000U);
  client = connect();
  EXPECT_EQ(post(registration("a1")), accepted("a1"));
}

TEST_F(PushServerTest, TheResponderAnswersInPlaceOfTheRegistrations) {
  std::vector<std::optional<Answer>> answers = {Answer{503, std::string("\0\xFF", 2), "text/x"},
                                                Answer{302, "", "text/x"}, std::nullopt};
  std::size_t next = 0;
  std::vector<int> statuses;
  start({.onAnswer = [&](const Answer& answer) { statuses.push_back(answer.status); },
         .responder = [&](const ReceivedRequest& request) -> std::optional<Answer> {
           EXPECT_EQ(request.path, kEndpointPath);
           EXPECT_EQ(request.mediaType, kForm);
           if (next >= answers.size()) throw std::runtime_error("secret");
           return answers[next++];
         }});
  for (const auto& expected : {*answers[0], *answers[1], Answer{200, accepted("a1")}}) {
    const auto result = client->post(kEndpointPath, kForm, registration("a1"));
    ASSERT_TRUE(result);
    EXPECT_EQ(result->status, expected.status);
    EXPECT_EQ(result->body, expected.body);
  }
  EXPECT_EQ(statuses, (std::vector<int>{503, 302, 200}));
  const auto failed = client->post(kEndpointPath, kForm, registration("a1"));
  ASSERT_TRUE(failed);
  EXPECT_EQ(failed->status, 500);
  EXPECT_EQ(failed->body.find("secret"), std::string::npos);
  EXPECT_EQ(refused, std::vector<std::string>{"500 the server failed: secret"});
  for (const auto& [name, value] : failed->headers)
    EXPECT_EQ(value.find("secret"), std::string::npos) << name;
}

TEST_F(PushServerTest, ServesSeveralConnectionsOneRequestAtATime) {
  std::atomic<int> inside = 0;
  std::atomic<int> most = 0;
  start({.responder = [&](const ReceivedRequest&) {
    most = std::max(most.load(), ++inside);
    std::this_thread::sleep_for(milliseconds(2));
    --inside;
    return std::nullopt;
  }});
  std::vector<std::future<int>> clients;
  clients.reserve(8);
  for (int i = 0; i < 8; ++i) {
    clients.push_back(std::async(std::launch::async, [this] {
      const auto own = connect();
      int good = 0;
      for (int request = 0; request < 10; ++request) {
        const auto result = own->post(kEndpointPath, kForm, registration("a1"));
        good += result && result->body == accepted("a1") ? 1 : 0;
      }
      return good;
    }));
  }
  for (auto& one : clients) EXPECT_EQ(one.get(), 10);
  EXPECT_EQ(most, 1);
}

TEST_F(PushServerTest, StopsAtOnceAndFinishesTheRequestInProgress) {
  std::promise<void> entered;
  std::atomic<bool> slow = false;
  start({.responder = [&](const ReceivedRequest&) {
    if (slow) {
      entered.set_value();
      std::this_thread::sleep_for(milliseconds(100));
    }
    return std::nullopt;
  }});
  ASSERT_EQ(post(registration("idle")), accepted("idle"));
  const auto half = connect();
  std::promise<void> halfSent;
  auto broken = std::async(std::launch::async, [&] {
    return half
        ->postPieces(kEndpointPath, kForm,
                     [&, told = false]() mutable -> std::string {
                       if (!std::exchange(told, true)) halfSent.set_value();
                       std::this_thread::sleep_for(milliseconds(20));
                       return "x";
                     })
        .has_value();
  });
  halfSent.get_future().wait();
  slow = true;
  const auto last = connect();
  auto answered = std::async(std::launch::async, [&] {
    const auto result = last->post(kEndpointPath, kForm, registration("last"));
    return result ? result->body : "no answer";
  });
  entered.get_future().wait();
  const auto begun = steady_clock::now();
  server.reset();
  EXPECT_LT(steady_clock::now() - begun, kFarBeyond);
  EXPECT_EQ(answered.get(), accepted("last"));
  EXPECT_FALSE(broken.get());
}

TEST_F(PushServerTest, LeavesTheProgramsSignalsAlone) {
  const auto before = std::signal(SIGPIPE, SIG_DFL);
  start();
  EXPECT_EQ(std::signal(SIGPIPE, before), SIG_DFL);
}

TEST_F(PushServerTest, SaysWhyItDoesNotStart) {
  start();
  const auto problem = [&](PushServerOptions options) -> std::string {
    try {
      const PushServer other(authority, std::move(options));
    } catch (const ServerError& error) {
      return error.what();
    }
    return "it started";
  };
  const std::string port = std::to_string(server->port());
  EXPECT_EQ(problem({.port = server->port()}),
            "port " + port + " is in use by another program; choose another port");
  EXPECT_EQ(problem({.hashKey = "short"}), "the hash key must have 32 bytes");
  EXPECT_NE(problem({.dataFile = "/nowhere/at/all.db"}).find("/nowhere/at/all.db"), std::string::npos);
  const std::string text = temporary("no-database");
  std::ofstream(text) << std::string(5000, 'x');
  EXPECT_NE(problem({.dataFile = text}).find(text), std::string::npos);
  std::filesystem::remove(text);
}

TEST_F(PushServerTest, KeepsRegistrationsInTheDataFile) {
  const std::string file = temporary("registrations.db");
  std::filesystem::remove(file);
  start({.dataFile = file});
  EXPECT_EQ(post(registration("a1")), accepted("a1"));
  const auto port = server->port();
  start({.port = 0, .dataFile = file});
  EXPECT_EQ(post(change("a1", "b2")), accepted("b2"));
  start({.port = port, .dataFile = file});
  EXPECT_EQ(server->port(), port);
  EXPECT_EQ(post(change("b2", "c3")), accepted("c3"));
  start();
  EXPECT_NE(post(change("c3", "d4")), accepted("d4")) << "memory knows nothing of the file";
  std::filesystem::remove(file);
}

TEST(ParseRequest, CutsValuesAtTheNextName) {
  const auto parsed = parseRequest(
      "&tarea=pushlibRegistrarToken&token=a&b=c&jsonGeo=1&jsonApp={\"u\":\"x?a=1&b=2\"}&jsonDevice=&"
      "jsonLibreria=%20 "
      "&jsonGeo={\"&token=\":\"&jsonApp=\"}");
  ASSERT_TRUE(parsed.request);
  EXPECT_EQ(parsed.request->token, "a&b=c&jsonGeo=1");
  EXPECT_EQ(parsed.request->app, "{\"u\":\"x?a=1&b=2\"}");
  EXPECT_EQ(parsed.request->device, "");
  EXPECT_EQ(parsed.request->library, "%20 ");
  EXPECT_EQ(parsed.request->geo, "{\"&token=\":\"&jsonApp=\"}");
}

TEST(MisbehavingServer, StopsAtOnceWhateverItIsDoing) {
  const Authority authority;
  using Kind = Misbehaviour::Kind;
  for (const Misbehaviour& behaviour :
       {Misbehaviour{Kind::silence, ""}, Misbehaviour{Kind::trickle, "abc"},
        Misbehaviour{Kind::endless, std::string(100'000, 'x')},
        Misbehaviour{Kind::answer, "HTTP/1.1 200 OK\r\nContent-Length: 9\r\n\r\n"}}) {
    std::promise<void> read;
    auto server = std::make_unique<MisbehavingServer>(MisbehavingServerOptions{
        .identity = authority.issue("localhost"),
        .script = {behaviour},
        .onRequest = [&](const std::string&, const std::string&) { read.set_value(); }});
    HttpsClient client(server->port());
    auto posted =
        std::async(std::launch::async, [&] { return client.post("/", "text/plain", "x").has_value(); });
    read.get_future().wait();
    const auto begun = steady_clock::now();
    server.reset();
    EXPECT_LT(steady_clock::now() - begun, kFarBeyond);
    EXPECT_FALSE(posted.get());
  }
}

}  // namespace
}  // namespace quorvantis::server
