#include <sys/resource.h>

#include <array>
#include <cstdio>
#include <fstream>
#include <sstream>

#include "tests/faults/fault.h"
#include "tests/phone.h"

namespace quorvantis {
namespace {

using platform::make;
using platform::Object;
using platform::Ref;
using server::MisbehavingServer;
using std::chrono::milliseconds;

const std::string kTask = "pushlibRegistrarToken";
[[maybe_unused]] constexpr long kMostGrowth =
    64L * 1024;  // KiB; including the servers, which keep what they send

/// The process's peak memory, in KiB.
long peak() {
  rusage usage{};
  getrusage(RUSAGE_SELF, &usage);
  return usage.ru_maxrss;
}

std::string told(const std::string& selector, const Object& argument) {
  return selector + " " + read(argument).value_or("nil");
}

struct Host {
  void onRegisterToken(const Object& token) { heard.push_back(told("onRegisterToken:", token)); }
  void onUpdateToken(const Object& token) { heard.push_back(told("onUpdateToken:", token)); }
  void onError(const Object& error) { heard.push_back(told("onError:", error)); }

  std::vector<std::string> heard;
};

class Client : public PushRequestData {
 public:
  void downloadFinished(const platform::NSString& connexionValue) override {
    ++finished;
    PushRequestData::downloadFinished(connexionValue);
  }

  int finished = 0;
};

class HostileServerTest : public testing::Test {
 protected:
  HostileServerTest() {
    device.network.setTrustedAuthorities(authority.certificate());
    device.network.setHost(kElsewhere, {"127.0.0.1", elsewhere.port()});
    push.setDelegate(host);
    listener->onMessage = [this] {
      const auto& [selector, argument] = listener->heard.back();
      push.performSelector({selector}, argument);
    };
    client->setDelegate(listener->self());
  }

  ~HostileServerTest() override { emptySharedSlot(); }

  /// The client's and the host's callbacks for one request to the port.
  Outcome outcomeOfRequest(std::uint16_t port, milliseconds limit) {
    device.network.setHost(scenario::kPushHost, {"127.0.0.1", port});
    device.network.setLimits({limit, limit, std::size_t{1} << 20});
    client->finished = 0;
    client->sendConnexion(text(kTask), text("&tarea=" + kTask + "&token=0a1b"), nullptr);
    device.queue.settle([](const auto& task) { task(); });
    EXPECT_EQ(client->finished, 1);

    std::vector<std::string> toClient;
    for (const auto& [selector, argument] : std::exchange(listener->heard, {})) {
      toClient.push_back(told(selector, argument));
    }
    const auto only = [](const std::vector<std::string>& all) {
      EXPECT_LE(all.size(), 1U);
      return all.empty() ? "nothing" : all.front();
    };
    return {only(toClient), only(std::exchange(host.heard, {}))};
  }

  server::MisbehavingServerOptions options(std::deque<server::Misbehaviour> script) {
    return {.identity = authority.issue(scenario::kPushHost),
            .script = std::move(script),
            .onRequest = [this](const std::string& head, const std::string&) {
              const std::lock_guard lock(mutex);
              heads.push_back(head);
            }};
  }

  /// The heads of the requests since the last call.
  std::vector<std::string> received() {
    const std::lock_guard lock(mutex);
    return std::exchange(heads, {});
  }

  device::Device device;
  const server::Authority authority;
  std::mutex mutex;
  std::vector<std::string> heads;
  MisbehavingServer healthy{options({{server::Misbehaviour::Kind::answer, goodAnswer()}})};
  MisbehavingServer elsewhere{{.identity = authority.issue(kElsewhere),
                               .script = {{server::Misbehaviour::Kind::answer, goodAnswer()}},
                               .onRequest = [](const std::string& head, const std::string&) {
                                 ADD_FAILURE() << "another host was asked: " << head;
                               }}};
  Host host;
  Push& push = Push::shared();
  Ref<Listener> listener = make<Listener>();
  Ref<Client> client = make<Client>();
};

TEST_F(HostileServerTest, EachFaultHasItsOutcomeAndTheNextRequestWorks) {
  const server::Misbehaviour good{server::Misbehaviour::Kind::answer, goodAnswer()};
  const Outcome registered{"onRegisterToken: t", "onRegisterToken: t"};
  const server::RefusingPort refusing;
  for (const Fault& fault : allFaults(authority)) {
    SCOPED_TRACE(fault.name);
    [[maybe_unused]] const long before = peak();
    const bool isEarly = fault.beforehand || fault.isRefusal;
    auto hostile = options({isEarly ? good : fault.behaviour, good});
    if (fault.beforehand) fault.beforehand(hostile);
    const MisbehavingServer server(std::move(hostile));

    EXPECT_EQ(outcomeOfRequest(fault.isRefusal ? refusing.port() : server.port(),
                               milliseconds(fault.waits ? 250 : 20'000)),
              fault.outcome);
    EXPECT_EQ(received().size(), isEarly ? 0U : 1U);

    // A reset may still be in transit when the next request is sent.
    const bool isGone = isEarly || fault.behaviour.kind == server::Misbehaviour::Kind::cut;
    EXPECT_EQ(outcomeOfRequest(isGone ? healthy.port() : server.port(), milliseconds(20'000)), registered);
    const auto next = received();
    ASSERT_EQ(next.size(), 1U);
    EXPECT_TRUE(next[0].starts_with("POST /apis/api_push_v3.php HTTP/1.1\r\nHost: push.quorvantis.com\r\n"));
    EXPECT_EQ(next[0].find("Cookie"), std::string::npos);
    EXPECT_EQ(next[0].find("Authorization"), std::string::npos);
#ifndef QUORVANTIS_SANITIZED
    EXPECT_LT(peak() - before, kMostGrowth);
#endif
  }
  for (const device::Event& event : device.record.take()) {
    if (event.at("event") != json::Value("log")) continue;
    const auto* message = event.at("message").get<std::string>();
    ASSERT_NE(message, nullptr);
    EXPECT_TRUE(*message == "ENTRA AL ONERROR, error: Error --> registerToken" ||
                *message == "ENTRA AL ONERROR, error: x")
        << *message;
  }
}

TEST_F(HostileServerTest, TheServersListenOnlyOnLoopback) {
  const server::PushServer good(authority, {.hashKey = scenario::kHashKey, .host = scenario::kPushHost});
  for (const std::uint16_t port : {good.port(), healthy.port()}) {
    std::array<char, 8> suffix{};
    std::snprintf(suffix.data(), suffix.size(), ":%04X", port);
    std::vector<std::string> listening;
    for (const char* table : {"/proc/net/tcp", "/proc/net/tcp6"}) {
      std::ifstream sockets(table);
      for (std::string line; std::getline(sockets, line);) {
        std::istringstream columns(line);
        std::string number, local, remote, state;
        columns >> number >> local >> remote >> state;
        if (local.ends_with(suffix.data()) && state == "0A") listening.push_back(local);
      }
    }
    EXPECT_EQ(listening, std::vector{std::string("0100007F") + suffix.data()});
  }
}

TEST_F(HostileServerTest, TheDocumentListsEachFault) {
  std::string expected;
  for (const Fault& fault : allFaults(authority)) {
    expected += "| " + fault.name + " | " + fault.outcome.client + " | " + fault.outcome.host + " |\n";
  }
  std::string found;
  std::ifstream document(QUORVANTIS_FAULTS_DOCUMENT);
  for (std::string line; std::getline(document, line);) {
    const bool isRow = line.starts_with("| ") && !line.starts_with("| Fault ");
    if (isRow) found += line + "\n";
  }
  EXPECT_EQ(found, expected) << "the rows of docs/faults.md are to be:\n" << expected;
}

}  // namespace
}  // namespace quorvantis
