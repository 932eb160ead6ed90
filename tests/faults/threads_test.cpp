#include <chrono>
#include <random>
#include <thread>

#include "platform/NSUserDefaults.h"
#include "server/misbehaving_server.h"
#include "tests/phone.h"
#include "tests/scratch_folder.h"

namespace quorvantis {
namespace {

using platform::make;
using platform::NSString;
using platform::NSUserDefaults;
using server::MisbehavingServer;
using server::Misbehaviour;
using std::chrono::microseconds;

const std::string kTask = "pushlibRegistrarToken";

struct Host {
  void onReceiveNotification(const platform::NSDictionary&) { ++received; }

  int received = 0;
};

class Client : public Counted<PushRequestData> {
 public:
  void downloadFinished(const NSString& connexionValue) override {
    ++finished;
    PushRequestData::downloadFinished(connexionValue);
  }

  static inline std::atomic<int> finished = 0;
};

Misbehaviour goodAnswer() {
  return {Misbehaviour::Kind::answer, "HTTP/1.1 200 OK\r\nContent-Length: 13\r\n\r\n{\"token\":\"t\"}"};
}

class ThreadsTest : public testing::Test {
 protected:
  ThreadsTest() { Client::finished = 0; }
  ~ThreadsTest() override { emptySharedSlot(); }

  static void settle(device::Device& device) {
    device.queue.settle([](const auto& task) { task(); });
  }

  std::unique_ptr<MisbehavingServer> serve(device::Device& device, std::deque<Misbehaviour> script) const {
    auto server = std::make_unique<MisbehavingServer>(server::MisbehavingServerOptions{
        .identity = authority.issue(scenario::kPushHost), .script = std::move(script)});
    device.network.setTrustedAuthorities(authority.certificate());
    device.network.setHost(scenario::kPushHost, {"127.0.0.1", server->port()});
    return server;
  }

  static void send(Client& client) { client.sendConnexion(text(kTask), text("&tarea=" + kTask), nullptr); }

  const ScratchFolder folder;
  const server::Authority authority;
};

TEST_F(ThreadsTest, SettingsAreWrittenWhileNotificationsArrive) {
  constexpr int kRounds = 60;
  device::Device device(folder.path() / "settings.sqlite");
  Host host;
  Push& push = Push::shared();
  push.setDelegate(host);
  const auto write = [](int id) {
    const NSUserDefaults defaults = NSUserDefaults::standardUserDefaults();
    const NSString own = text("own " + std::to_string(id));
    for (int i = 0; i < kRounds; ++i) {
      defaults.setObject(text(std::to_string(i)), own);
      defaults.setObject(text("theirs"), text("pushExtra2"));
      EXPECT_EQ(read(defaults.objectForKey(own)), std::to_string(i));
      EXPECT_TRUE(defaults.synchronize());
    }
  };
  std::thread writers[] = {std::thread(write, 0), std::thread(write, 1), std::thread(write, 2)};
  for (int i = 0; i < kRounds; ++i) {
    push.didReceiveRemoteNotification(
        dictionary({{"aps", json::Dictionary{{"alert", json::Dictionary{{"body", "b"}}},
                                             {"type", "pushlib-extras"},
                                             {"extra1", i},
                                             {"extra2", "ours"}}}}));
  }
  for (std::thread& writer : writers) writer.join();
  EXPECT_EQ(host.received, kRounds);
  EXPECT_EQ(device.settingsFailure(), std::nullopt);
  device.endProcess();
  json::Dictionary values = device.settings.values();
  const json::Value last = values.at("pushExtra2");
  EXPECT_TRUE(last == json::Value("ours") || last == json::Value("theirs"));
  values.erase("pushExtra2");
  const json::Value written = std::to_string(kRounds - 1);
  EXPECT_EQ(values,
            (json::Dictionary{
                {"own 0", written}, {"own 1", written}, {"own 2", written}, {"pushExtra1", kRounds - 1}}));
}

TEST_F(ThreadsTest, EachRequestEndsOnceWheneverItIsCancelled) {
  constexpr int kRequests = 150;
  device::Device device(folder.path() / "settings.sqlite");
  const auto server = serve(device, {goodAnswer()});
  const auto client = make<Client>();
  const auto listener = make<Listener>();
  client->setDelegate(listener->self());
  std::atomic<bool> over = false;
  std::thread canceller([&] {
    std::mt19937 random(7516);
    while (!over) {
      std::this_thread::sleep_for(microseconds(random() % 600));
      client->cancel();
    }
  });
  for (int i = 0; i < kRequests; ++i) {
    send(*client);
    if (i % 3 == 2) settle(device);
  }
  over = true;
  canceller.join();
  settle(device);
  EXPECT_EQ(Client::finished, kRequests);
  ASSERT_EQ(listener->heard.size(), std::size_t{kRequests});
  for (const auto& [selector, argument] : listener->heard) {
    EXPECT_EQ(read(argument), selector == "onError:" ? "Error --> registerToken" : "t");
  }

  listener->heard.clear();
  send(*client);
  settle(device);
  ASSERT_EQ(listener->heard.size(), 1U);
  EXPECT_EQ(listener->heard[0].first, "onRegisterToken:");
}

TEST_F(ThreadsTest, RequestsLeaveNothingBehindWhenTheServerOrTheClientEnds) {
  constexpr int kRounds = 60;
  std::mt19937 random(2045);
  for (int round = 0; round < kRounds; ++round) {
    SCOPED_TRACE(round);
    const auto begun = std::chrono::steady_clock::now();
    {
      device::Device device(folder.path() / "settings.sqlite");
      std::deque<Misbehaviour> script = {goodAnswer(), {Misbehaviour::Kind::silence}};
      if (random() % 2 == 0) std::swap(script.front(), script.back());
      auto server = serve(device, script);
      auto client = make<Client>();
      client->setDelegate(make<Listener>()->self());
      for (int i = 0; i < 3; ++i) send(*client);
      const microseconds pause(random() % 8000);
      const bool clientGoes = round % 2 == 0;
      std::thread other([&, pause] {
        std::this_thread::sleep_for(pause);
        if (clientGoes) {
          client = {};
        } else {
          server.reset();
        }
      });
      settle(device);
      other.join();
      if (client) send(*client);  // still waiting when the device goes
      client = {};
    }
    EXPECT_EQ(Client::live, 0);
    EXPECT_LT(std::chrono::steady_clock::now() - begun, std::chrono::seconds(20))
        << "it waited for the limit";
  }
}

}  // namespace
}  // namespace quorvantis
