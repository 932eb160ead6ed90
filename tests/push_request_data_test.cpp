#include <algorithm>
#include <array>
#include <thread>

#include "tests/phone.h"

namespace quorvantis {
namespace {

using device::Event;
using device::events::request;
using platform::make;
using platform::NSString;
using platform::Object;
using platform::Ref;

const std::string kEndpoint = "https://push.quorvantis.com/apis/api_push_v3.php";
const std::string kNoFields = "jsonApp=(null)&jsonDevice=(null)&jsonLibreria=(null)&jsonGeo={}";
const std::string kRegister = "pushlibRegistrarToken";
const std::string kChange = "pushlibCambioToken";
const std::string kUpdate = "pushlibActualizarDatosTerminal";

std::string registration(const std::string& token, const std::string& fields = kNoFields) {
  return "&tarea=" + kRegister + "&token=" + token + "&" + fields;
}

class Client : public Counted<PushRequestData> {
 public:
  using PushRequestData::camposComunes;
  using PushRequestData::camposLocalizacion;
  using PushRequestData::conexion;
  using PushRequestData::delegate_;
  using PushRequestData::TAG;
  using PushRequestData::userDefaultsPrefix_;

  void downloadFinished(const NSString& connexionValue) override {
    finished.push_back(read(connexionValue).value_or("nil"));
    PushRequestData::downloadFinished(connexionValue);
  }

  std::vector<std::string> finished;
};

/// What a listener has heard: a selector and the JSON value of its argument, or nothing for nil.
struct Heard {
  std::string selector;
  std::optional<json::Value> argument;

  friend bool operator==(const Heard&, const Heard&) = default;
};

class PushRequestDataTest : public PhoneTest {
 protected:
  PushRequestDataTest() { client->setDelegate(listener->self()); }

  std::vector<Heard> heard() {
    std::vector<Heard> all;
    for (const auto& [selector, argument] : std::exchange(listener->heard, {})) {
      all.push_back({selector, argument ? platform::simulated::valueFrom(argument) : std::nullopt});
    }
    return all;
  }

  void send(const std::string& task) { client->sendConnexion(text(task), text(registration("00")), nullptr); }

  std::vector<Heard> answerTo(const std::string& task, int status, const std::string& body) {
    service.queue(server::Answer{.status = status, .body = body});
    send(task);
    settle();
    return heard();
  }

  Ref<Listener> listener = make<Listener>();
  Ref<Client> client = make<Client>();
};

TEST_F(PushRequestDataTest, BeginsWithATransportAPrefixAndATag) {
  const auto fresh = make<Client>();
  EXPECT_TRUE(fresh->conexion);
  EXPECT_FALSE(fresh->camposComunes);
  EXPECT_FALSE(fresh->camposLocalizacion);
  EXPECT_EQ(read(fresh->TAG), "[PushRequestData]");
  EXPECT_FALSE(fresh->delegate());
  EXPECT_EQ(read(fresh->userDefaultsPrefix()), "quorvantis_");
}

TEST_F(PushRequestDataTest, ReleasesItsFieldsFromTheLastToTheFirst) {
  std::vector<std::string> log;
  const auto probe = [&log](const char* name) { return platform::make<Probe>(name, log)->self(); };
  auto fresh = make<Client>();
  fresh->conexion = probe("conexion").as<platform::QuorvantisConnexion>();
  fresh->camposComunes = probe("camposComunes").as<NSString>();
  fresh->camposLocalizacion = probe("camposLocalizacion").as<NSString>();
  fresh->TAG = probe("TAG").as<NSString>();
  fresh->setDelegate(probe("delegate"));
  fresh->setUserDefaultsPrefix(probe("userDefaultsPrefix").as<NSString>());
  EXPECT_TRUE(log.empty());
  fresh = {};
  EXPECT_EQ(log, (std::vector<std::string>{"userDefaultsPrefix", "delegate", "TAG", "camposLocalizacion",
                                           "camposComunes", "conexion"}));
}

TEST_F(PushRequestDataTest, ReportsOneOutcomePerAnswer) {
  struct Row {
    std::string task, success, unusable;
  };
  const Row rows[] = {{kRegister, "onRegisterToken:", "Error --> registerToken"},
                      {kChange, "onUpdateToken:", "Error --> changeToken"},
                      {kUpdate, "onUpdateToken:", "Error --> updateTerminals"}};
  for (const Row& row : rows) {
    SCOPED_TRACE(row.task);
    const auto expect = [&](int status, const std::string& body, const Heard& outcome) {
      EXPECT_EQ(answerTo(row.task, status, body), std::vector{outcome}) << body;
    };
    const Heard unusable{"onError:", row.unusable};
    const Heard withoutToken{row.success, std::nullopt};

    expect(500, R"({"error":"no","token":"t"})", unusable);
    expect(200, "error", unusable);
    expect(200, "", unusable);

    for (const char* body : {"SI", " error", "Error", "\"error\"", "{\"token\":", "\xff", "plain", "[]",
                             "[{\"token\":\"t\"}]", "{}", R"({"error":"no"})"}) {
      expect(200, body, withoutToken);
    }

    expect(200, R"({"error":"si","errorDescripcion":"x","token":"t"})", {"onError:", "x"});
    expect(200, R"({"error":"si","errorDescripcion":{"code":[7]}})",
           {"onError:", json::Dictionary{{"code", json::Array{7}}}});
    expect(200, R"({"error":"si"})", {"onError:", std::nullopt});

    for (const char* error : {"\"no\"", "\"SI\"", "\"si \"", "1", "null", "[\"si\"]", "{\"si\":\"si\"}"}) {
      expect(200, std::string(R"({"token":"t","error":)") + error + "}", {row.success, "t"});
    }
    expect(200, R"({"token":{"a":1.5}})", {row.success, json::Dictionary{{"a", 1.5}}});
    expect(200, R"({"token":null})", {row.success, json::Value()});
  }
}

TEST_F(PushRequestDataTest, SaysNothingWhereNobodyAnswers) {
  EXPECT_TRUE(answerTo("pushlibOtra", 200, R"({"token":"t"})").empty());
  EXPECT_EQ(client->finished, std::vector<std::string>{"pushlibOtra"});
  client->downloadFinished(nullptr);
  EXPECT_TRUE(heard().empty());

  listener->selectors = {"onError:", "onUpdateToken:"};
  EXPECT_TRUE(answerTo(kRegister, 200, R"({"token":"t"})").empty());
  listener->selectors = {"onRegisterToken:"};
  EXPECT_TRUE(answerTo(kRegister, 200, R"({"error":"si","token":"t"})").empty());
  EXPECT_TRUE(answerTo(kRegister, 200, "error").empty());
  client->setDelegate(nullptr);
  EXPECT_TRUE(answerTo(kRegister, 200, R"({"token":"t"})").empty());
}

TEST_F(PushRequestDataTest, PostsToAGivenAddressOnceAndOtherwiseToTheEndpoint) {
  client->sendConnexion(text("one"), text("a=1&b= %é"), text("https://elsewhere.example/"));
  client->sendConnexion(text("two"), nullptr, nullptr);
  EXPECT_EQ(take({"request"}), (std::vector<Event>{request("one", "https://elsewhere.example/", "a=1&b= %é"),
                                                   request("two", kEndpoint, std::nullopt)}));
}

TEST_F(PushRequestDataTest, ReadsTheCommonFieldsUnderItsPrefix) {
  EXPECT_EQ(read(client->crearCamposComunes()), kNoFields);

  device.storeFromElsewhere({{"quorvantis_jsonAppPush", "a&b=c d"},
                             {"quorvantis_jsonDevice", 7},
                             {"quorvantis_jsonGeo", "[ignored]"},
                             {"jsonAppPush", "[1]"},
                             {"jsonDevice", "[2]"},
                             {"(null)jsonLibreriaPush", "[3]"},
                             {"jsonGeo", "[4]"}});
  const auto fieldsWith = [this](const NSString& prefix) {
    client->setUserDefaultsPrefix(prefix);
    return read(client->crearCamposComunes());
  };
  EXPECT_EQ(read(client->crearCamposComunes()),
            "jsonApp=a&b=c d&jsonDevice=7&jsonLibreria=(null)&jsonGeo=[4]");
  EXPECT_EQ(fieldsWith(text("")), "jsonApp=[1]&jsonDevice=[2]&jsonLibreria=(null)&jsonGeo=[4]");
  EXPECT_EQ(fieldsWith(nullptr), "jsonApp=(null)&jsonDevice=(null)&jsonLibreria=[3]&jsonGeo=[4]");
}

TEST_F(PushRequestDataTest, SendsItselfWhatASubclassMayOverride) {
  class Overriding : public Client {
   public:
    NSString crearCamposComunes() override { return text("fields"); }
    void sendConnexion(const NSString& connexion, const NSString& postParameters,
                       const NSString& url) override {
      sent.push_back({read(connexion), read(postParameters), read(url)});
    }
    NSString className() const override { return text("Overriding"); }
    std::vector<std::array<std::optional<std::string>, 3>> sent;
  };
  const auto overriding = make<Overriding>();
  EXPECT_EQ(read(overriding->TAG), "[Overriding]");
  overriding->registerForRemoteNotificationsWithDeviceToken(text("aa"), nullptr, text("1.0"));
  EXPECT_EQ(read(overriding->camposComunes), "fields");

  // Only a first registration keeps its common fields.
  overriding->camposComunes = nullptr;
  overriding->registerForRemoteNotificationsWithDeviceToken(text("bb"), text("hash"), text("1.0"));
  EXPECT_FALSE(overriding->camposComunes);
  ASSERT_EQ(overriding->sent.size(), 2u);
  EXPECT_EQ(overriding->sent[0][1], registration("aa", "fields"));
  EXPECT_EQ(overriding->sent[1][0], kChange);
  EXPECT_EQ(overriding->sent[1][1], "&tarea=" + kChange + "&tokenAntiguo=aa&tokenNuevo=bb&fields");
  EXPECT_FALSE(overriding->sent[1][2]);
}

TEST_F(PushRequestDataTest, UsesTheFieldWhateverTheGetterReturns) {
  class Hiding : public Client {
    [[nodiscard]] Object delegate() const override { return nullptr; }
  };
  client = make<Hiding>();
  client->setDelegate(listener->self());
  EXPECT_EQ(answerTo(kRegister, 200, ""), (std::vector<Heard>{{"onError:", "Error --> registerToken"}}));
  EXPECT_EQ(answerTo(kRegister, 200, R"({"error":"si","errorDescripcion":"no"})"),
            (std::vector<Heard>{{"onError:", "no"}}));
  EXPECT_EQ(answerTo(kRegister, 200, R"({"token":"t"})"), (std::vector<Heard>{{"onRegisterToken:", "t"}}));
}

TEST_F(PushRequestDataTest, SendsToTheObjectThatItHasAsked) {
  class Replacing : public Listener {
   public:
    [[nodiscard]] bool respondsToSelector(platform::Selector selector) const override {
      client->setDelegate(successor->self());
      return Listener::respondsToSelector(selector);
    }
    Client* client = nullptr;
    Listener* successor = nullptr;
  };
  const auto replacing = make<Replacing>();
  replacing->client = client.get();
  replacing->successor = listener.get();
  client->setDelegate(replacing->self());
  answerTo(kRegister, 200, R"({"token":"t"})");
  EXPECT_EQ(replacing->heard.size(), 1U);
  EXPECT_TRUE(listener->heard.empty());
}

// What it owned sends it messages while it is destroyed.
TEST_F(PushRequestDataTest, IsIntactUntilItsFieldsAreReleased) {
  class Parting : public Counted<Listener> {
   public:
    ~Parting() override {
      EXPECT_FALSE(client->userDefaultsPrefix_) << "what was declared after it has gone before it";
      EXPECT_FALSE(client->delegate());
      EXPECT_TRUE(client->conexion);
      client->cancel();
      client->downloadFinished(text(kRegister));
      client->setDelegate(make<Counted<Listener>>()->self());
    }
    Client* client = nullptr;
  };
  auto ending = make<Client>();
  auto parting = make<Parting>();
  parting->client = ending.get();
  ending->setDelegate(parting->self());
  parting = {};
  const int clients = Client::live;
  ending = {};
  EXPECT_EQ(Client::live, clients - 1);
  EXPECT_EQ(Counted<Listener>::live, 0);
}

TEST_F(PushRequestDataTest, CancelsOnlyTheRequestInProgress) {
  send(kRegister);
  send(kChange);
  client->cancel();
  client->cancel();  // the first request still waits for its end
  settle();
  EXPECT_EQ(client->finished, (std::vector{kRegister, kChange}));
  EXPECT_EQ(heard(), (std::vector<Heard>{{"onError:", "Error --> registerToken"}, {"onUpdateToken:", "00"}}));

  client->cancel();  // of nothing
  EXPECT_EQ(answerTo(kUpdate, 200, R"({"token":"t"})"), (std::vector<Heard>{{"onUpdateToken:", "t"}}));
}

TEST_F(PushRequestDataTest, CancelsARequestOnTheWire) {
  int answered = 0;
  const scenario::PushService slow(device, scenario::DefaultAnswer::accept, [&](const server::Answer&) {
    if (++answered == 1) client->cancel();
  });
  send(kRegister);
  send(kRegister);
  settle();
  EXPECT_EQ(answered, 2);
  EXPECT_EQ(heard(),
            (std::vector<Heard>{{"onError:", "Error --> registerToken"}, {"onRegisterToken:", "00"}}));
}

TEST_F(PushRequestDataTest, SendsRequestsAfterItsProcessHasEnded) {
  send(kRegister);
  device.endProcess();
  send(kChange);
  settle();
  EXPECT_EQ(client->finished, std::vector{kChange});
}

TEST_F(PushRequestDataTest, ForgetsAnEarlierAnswerWhenARequestFails) {
  answerTo(kRegister, 200, R"({"token":"t"})");
  service.queue(scenario::Fault::refuse);
  send(kRegister);
  settle();
  EXPECT_EQ(heard(), (std::vector<Heard>{{"onError:", "Error --> registerToken"}}));
}

TEST_F(PushRequestDataTest, IsForgottenWhenItDies) {
  send(kRegister);
  send(kChange);
  listener->onMessage = [this] { client = {}; };  // in the midst of its first answer
  settle();
  EXPECT_EQ(Client::live, 0);
  EXPECT_EQ(heard(), (std::vector<Heard>{{"onRegisterToken:", "00"}}));
  EXPECT_EQ(take({"received"}).size(), 1u);

  client = make<Client>();
  client->setDelegate(listener->self());
  send(kRegister);
  client = {};
  settle();
  EXPECT_TRUE(heard().empty());
  EXPECT_TRUE(take({"received"}).empty());
}

TEST_F(PushRequestDataTest, ContinuesAfterADelegateThatRaises) {
  send(kRegister);
  send(kChange);
  listener->onMessage = [] { platform::doesNotRecognizeSelector({"boom"}); };
  EXPECT_EQ(raisedBy([this] { settle(); }), "boom");
  listener->onMessage = nullptr;
  settle();
  EXPECT_EQ(client->finished, (std::vector{kRegister, kChange}));
  EXPECT_EQ(heard().size(), 2u);
}

TEST_F(PushRequestDataTest, RetainsItsDelegate) {
  using Held = Counted<Listener>;
  client->setDelegate(make<Held>()->self());
  EXPECT_EQ(Held::live, 1);
  client->setDelegate(listener->self());
  EXPECT_EQ(Held::live, 0);
  EXPECT_TRUE(client->delegate().isSame(listener->self()));
}

TEST_F(PushRequestDataTest, ReplacesItsDelegateWhileAnswersArrive) {
  static std::atomic<int> told;
  struct Teller : Counted<Listener> {
    void performSelector(platform::Selector, const Object&) override { ++told; }
  };
  told = 0;
  constexpr int kAnswers = 500;
  const auto quiet = make<PushRequestData>();
  quiet->setDelegate(make<Teller>()->self());
  const auto answer = [&] {
    for (int i = 0; i < kAnswers; ++i) quiet->downloadFinished(text(kRegister));
  };
  const auto replace = [&] {
    for (int i = 0; i < kAnswers; ++i) quiet->setDelegate(make<Teller>()->self());
  };
  std::thread threads[] = {std::thread(answer), std::thread(answer), std::thread(replace),
                           std::thread(replace)};
  for (std::thread& thread : threads) thread.join();
  EXPECT_EQ(told, 2 * kAnswers);
  EXPECT_EQ(Teller::live, 1);
}

}  // namespace
}  // namespace quorvantis
