#include <algorithm>

#include "platform/simulated/Front.h"
#include "tests/phone.h"

namespace quorvantis {
namespace {

using device::Event;
using platform::make;
using platform::NSData;
using platform::NSDictionary;
using platform::NSObject;
using platform::NSString;
using platform::Object;
using platform::Ref;
using platform::Selector;

/// Lets the tests see the fields, and does not outlive its test.
class TestPush : public Counted<Push> {
 public:
  using Push::activeInForegroundApp;
  using Push::aplication;
  using Push::appHash_;
  using Push::conn;
  using Push::deactivateGPS_;
  using Push::delegate_;
  using Push::dirAAbrir;
  using Push::pushVersion;
  using Push::recogidaDatos;
  using Push::registerLib;
  using Push::responseData;
  using Push::TAG;
  using Push::urlConexion;
  using Push::valorConexion;
};

/// A host that keeps what it is told.
struct Host {
  void onGetToken(const NSString& token) { hear("onGetToken:", token); }
  void onReceiveNotification(const NSDictionary& report) { hear("onReceiveNotification:", report); }
  void onRegisterToken(const Object& token) { hear("onRegisterToken:", token); }
  void onUpdateToken(const Object& token) { hear("onUpdateToken:", token); }
  void onError(const Object& error) { hear("onError:", error); }

  void hear(const char* selector, const Object& argument) {
    heard.emplace_back(selector, argument);
    if (onMessage) onMessage();
  }
  std::vector<std::string> selectors() const {
    std::vector<std::string> names;
    for (const auto& [selector, argument] : heard) names.push_back(selector);
    return names;
  }

  std::vector<std::pair<std::string, Object>> heard;
  std::function<void()> onMessage;
};

json::Dictionary payload(json::Dictionary aps) {
  return {{"aps", std::move(aps)}};
}

json::Dictionary linkPayload(const char* link) {
  return payload(
      {{"alert", json::Dictionary{{"body", "b"}}}, {"type", "pushlib-abrirurl"}, {"urlnoti", link}});
}

class PushTest : public PhoneTest {
 protected:
  ~PushTest() override { end(push); }

  /// The two would keep each other alive for good.
  template <class T>
  static void end(Ref<T>& ending) {
    if (ending) ending->recogidaDatos->setDelegate(nullptr);
    ending = {};
  }

  Host host;
  Ref<TestPush> push = make<TestPush>();
};

TEST_F(PushTest, BeginsWithItsVersionItsSiteItsClientAndItsTag) {
  EXPECT_FALSE(push->aplication || push->responseData || push->conn || push->urlConexion ||
               push->valorConexion || push->registerLib || push->appHash());
  EXPECT_EQ(read(push->pushVersion), "1.0");
  EXPECT_EQ(read(push->dirAAbrir), "https://www.quorvantis.com");
  ASSERT_TRUE(push->recogidaDatos);
  EXPECT_TRUE(push->recogidaDatos->delegate().isSame(push->self()));
  EXPECT_EQ(read(push->TAG), "[Push]");
  EXPECT_FALSE(push->activeInForegroundApp || push->deactivateGPS());
  EXPECT_EQ(push->delegate().object(), nullptr);
  EXPECT_FALSE(push->delegate().respondsToSelector({"onError:"}));

  device.library = {std::nullopt, false};
  auto unversioned = make<TestPush>();
  EXPECT_FALSE(unversioned->pushVersion);
  EXPECT_FALSE(unversioned->getVersion());
  end(unversioned);
}

TEST_F(PushTest, SharesOneInstanceOfTheClassThatAsksFirst) {
  Push& first = Push::shared<TestPush>();
  EXPECT_NE(dynamic_cast<TestPush*>(&first), nullptr);
  EXPECT_EQ(&Push::shared(), &first);
  first.setDelegate(host);

  // An instance of one's own has nothing in common with it.
  EXPECT_NE(push.get(), &first);
  push->setAppHash(text("own"));
  push->activePushNotifications(1);
  EXPECT_FALSE(first.appHash());
  EXPECT_EQ(push->delegate().object(), nullptr);

  // Another launch, with nothing left of the one before.
  device.endProcess();
  emptySharedSlot();
  EXPECT_EQ(TestPush::live, 1);
  EXPECT_EQ(Push::shared().delegate().object(), nullptr);
  EXPECT_EQ(dynamic_cast<TestPush*>(&Push::shared<TestPush>()), nullptr);
  settle();
  EXPECT_TRUE(take({"authorizationRequested"}).empty());
}

TEST_F(PushTest, ReleasesItsFieldsFromTheLastToTheFirst) {
  std::vector<std::string> log;
  const auto probe = [&log](const char* name) { return platform::make<Probe>(name, log)->self(); };
  push->aplication = probe("aplication").as<platform::UIApplication>();
  push->responseData = probe("responseData").as<platform::NSMutableData>();
  push->conn = probe("conn").as<platform::NSURLConnection>();
  push->urlConexion = probe("urlConexion").as<NSString>();
  push->valorConexion = probe("valorConexion").as<NSString>();
  push->pushVersion = probe("pushVersion").as<NSString>();
  push->dirAAbrir = probe("dirAAbrir").as<NSString>();
  push->recogidaDatos->setDelegate(probe("recogidaDatos"));
  push->registerLib = probe("registerLib").as<platform::QuorvantisRegisterLib>();
  push->TAG = probe("TAG").as<NSString>();
  push->setAppHash(probe("appHash").as<NSString>());
  EXPECT_TRUE(log.empty());
  push = {};
  EXPECT_EQ(log, (std::vector<std::string>{"appHash", "TAG", "registerLib", "recogidaDatos", "dirAAbrir",
                                           "pushVersion", "valorConexion", "urlConexion", "conn",
                                           "responseData", "aplication"}));
}

TEST_F(PushTest, NeitherRetainsNorKeepsTheHostsDelegate) {
  auto other = make<TestPush>();
  push->setDelegate(*other);
  EXPECT_EQ(push->delegate().object(), other.get());
  end(other);
  EXPECT_EQ(TestPush::live, 1);

  {
    Host brief;
    push->setDelegate(brief);
    push->onRegisterToken(nullptr);
    EXPECT_EQ(brief.selectors(), std::vector<std::string>{"onRegisterToken:"});
    push->setDelegate(nullptr);
  }
  push->onRegisterToken(nullptr);

  // Each send goes to the delegate of that moment.
  Host second;
  push->setDelegate(host);
  push->setAppHash(text("hash"));
  host.onMessage = [&] { push->setDelegate(second); };
  push->registerForRemoteNotificationsWithDeviceToken(data("\x01"));
  settle();
  EXPECT_EQ(host.selectors(), std::vector<std::string>{"onGetToken:"});
  EXPECT_EQ(second.selectors(), std::vector<std::string>{"onRegisterToken:"});
}

TEST_F(PushTest, AsksTheDelegateOnceBeforeItSendsExceptOnAnOldSystem) {
  struct Choosy : Host {
    bool respondsToSelector(Selector selector) {
      asked.emplace_back(selector.name);
      return std::exchange(willAnswer, false);
    }
    std::vector<std::string> asked;
    bool willAnswer = false;
  } choosy;
  const auto sendAllFive = [&](bool answer) {
    const auto with = [&](auto operation) {
      choosy.willAnswer = answer;
      operation();
    };
    with([&] { push->checkAppHash(); });
    push->setAppHash(text("hash"));
    with([&] { push->registerForRemoteNotificationsWithDeviceToken(data("\x01")); });
    push->setAppHash(nullptr);
    with([&] { push->didReceiveRemoteNotification(dictionary({})); });
    with([&] { push->onRegisterToken(nullptr); });
    with([&] { push->onUpdateToken(nullptr); });
  };
  const std::vector<std::string> all{
      "onError:", "onGetToken:", "onReceiveNotification:", "onRegisterToken:", "onUpdateToken:"};
  push->setDelegate(choosy);
  sendAllFive(false);
  EXPECT_EQ(std::exchange(choosy.asked, {}), all);
  EXPECT_TRUE(choosy.heard.empty());
  // One that says yes is not asked again, though it would say no.
  sendAllFive(true);
  EXPECT_EQ(std::exchange(choosy.asked, {}), all);
  EXPECT_EQ(choosy.selectors(), all);

  device.facts.systemVersion = "9.3.5";
  choosy.heard.clear();
  push->activePushNotifications(0);
  push->registerFinish();
  EXPECT_EQ(choosy.selectors(), (std::vector<std::string>{"onError:", "onError:"}));
  EXPECT_TRUE(choosy.asked.empty());

  struct Boastful {
    bool respondsToSelector(Selector) const { return true; }
    void onGetToken(const NSString&) {}
  } boastful;
  for (const PushDelegate& without : {PushDelegate(boastful), PushDelegate::withoutCallbacks()}) {
    push->setDelegate(without);
    EXPECT_EQ(raisedBy([&] { push->activePushNotifications(0); }), "onError:");
    EXPECT_EQ(raisedBy([&] { push->registerFinish(); }), "onError:");
  }
  push->setDelegate(boastful);
  EXPECT_EQ(raisedBy([&] { push->checkAppHash(); }), "onError:");
  push->setDelegate(nullptr);
  push->activePushNotifications(1);
  push->registerFinish();
  EXPECT_FALSE(push->registerLib);
  EXPECT_TRUE(take({"authorizationRequested", "registerUser"}).empty());
}

TEST_F(PushTest, SendsItselfWhatASubclassMayOverride) {
  struct Overriding : TestPush {
    NSString className() const override { return text("Overriding"); }
    Ref<PushRequestData> makePushRequestData() override { return make<Counted<PushRequestData>>(); }
    bool checkAppHash() override { return passes; }
    NSString hexadecimalStringFromData(const NSData&) override { return text("token"); }
    void didReceiveRemoteNotification(const NSDictionary& userInfo) override { payloads.push_back(userInfo); }
    void registerFinish() override { ++finished; }
    bool passes = true;
    int finished = 0;
    std::vector<NSDictionary> payloads;
  };
  auto overriding = make<Overriding>();
  EXPECT_EQ(read(overriding->TAG), "[Overriding]");
  EXPECT_EQ(Counted<PushRequestData>::live, 1);

  overriding->setDelegate(host);
  overriding->registerForRemoteNotificationsWithDeviceToken(data("\x01"));
  ASSERT_EQ(host.selectors(), std::vector<std::string>{"onGetToken:"});
  EXPECT_EQ(read(host.heard[0].second), "token");
  overriding->passes = false;
  overriding->registerForRemoteNotificationsWithDeviceToken(data("\x01"));
  EXPECT_EQ(host.heard.size(), 1u);

  overriding->activePushNotifications(1);
  settle();
  EXPECT_EQ(overriding->finished, 1);

  overriding->Push::registerFinish();
  const NSDictionary userInfo = dictionary(payload({}));
  platform::simulated::deliverInForeground(userInfo);
  overriding->applicationDidReceiveRemoteNotification(nullptr, userInfo, nullptr);
  ASSERT_EQ(overriding->payloads.size(), 2u);
  EXPECT_TRUE(overriding->payloads[0].isSame(userInfo) && overriding->payloads[1].isSame(userInfo));
  end(overriding);
  EXPECT_EQ(Counted<PushRequestData>::live, 0);
}

TEST_F(PushTest, WorksWithoutAClientWhenInitWasNotForwarded) {
  struct Uninitialised : Push {
    void init() override {}
  };
  Push& bare = Push::shared<Uninitialised>();
  bare.setAppHash(text("hash"));
  bare.setDelegate(host);
  bare.registerForRemoteNotificationsWithDeviceToken(data("\x01"));
  bare.activePushNotifications(1);
  settle();
  EXPECT_EQ(host.selectors(), std::vector<std::string>{"onGetToken:"});
  EXPECT_TRUE(take({"request"}).empty());
}

TEST_F(PushTest, UsesTheObjectThatItsSubclassReturns) {
  struct Face : NSObject,
                platform::UNUserNotificationCenterDelegate,
                platform::QuorvantisRegisterLibDelegate {
    void init() {}
    void registerFinish() override { ++messages; }
    void userNotificationCenterWillPresentNotification(
        const platform::UNUserNotificationCenter&, const platform::UNNotification&,
        const platform::UNNotificationPresentationHandler&) override {
      ++messages;
    }
    void userNotificationCenterDidReceiveNotificationResponse(const platform::UNUserNotificationCenter&,
                                                              const platform::UNNotificationResponse&,
                                                              const Object&) override {
      ++messages;
    }
    int messages = 0;
  };
  struct Masked : TestPush {
    [[nodiscard]] Object self() const override { return face->self(); }
    Ref<Face> face = make<Face>();
  };
  const auto masked = make<Masked>();
  EXPECT_TRUE(masked->recogidaDatos->delegate().isSame(masked->face->self()));
  masked->activePushNotifications(1);
  settle();
  EXPECT_EQ(masked->face->messages, 1);
  masked->registerFinish();
  platform::simulated::deliverInForeground(dictionary({}));
  EXPECT_EQ(masked->face->messages, 2);
}

TEST_F(PushTest, PassesOnTheSameObjects) {
  push->setDelegate(host);
  const NSDictionary userInfo = dictionary(payload({{"alert", json::Dictionary{}},
                                                    {"badge", "3 left"},
                                                    {"type", "pushlib-abrirurl"},
                                                    {"urlnoti", "https://a.example/"},
                                                    {"content-available", 1}}));
  push->didReceiveRemoteNotification(userInfo);
  ASSERT_EQ(host.heard.size(), 1u);
  const auto report = host.heard[0].second.as<NSDictionary>();
  const auto aps = userInfo.objectForKey(text("aps")).as<NSDictionary>();
  for (const char* key : {"alert", "badge", "type", "urlnoti", "content-available"}) {
    EXPECT_TRUE(report.objectForKey(text(key)).isSame(aps.objectForKey(text(key)))) << key;
  }
  EXPECT_TRUE(push->dirAAbrir.isSame(aps.objectForKey(text("urlnoti"))));
  EXPECT_EQ(device.application.badge, 3);

  const Object token = text("token");
  push->onRegisterToken(token);
  push->onUpdateToken(token);
  ASSERT_EQ(host.heard.size(), 3u);
  EXPECT_TRUE(host.heard[1].second.isSame(token) && host.heard[2].second.isSame(token));
}

TEST_F(PushTest, SendsToTheObjectThatItHasAsked) {
  struct Replacing : Host {
    bool respondsToSelector(platform::Selector /*selector*/) {
      push->setDelegate(*successor);
      return true;
    }
    Push* push = nullptr;
    Host* successor = nullptr;
  };
  Replacing replacing;
  replacing.push = push.get();
  replacing.successor = &host;
  push->setDelegate(replacing);
  push->onRegisterToken(text("token"));
  EXPECT_EQ(replacing.heard.size(), 1U);
  EXPECT_TRUE(host.heard.empty());
}

// What it owned sends it messages while it is destroyed.
TEST_F(PushTest, IsIntactUntilItsFieldsAreReleased) {
  class Parting : public platform::NSObject {
   public:
    ~Parting() override {
      EXPECT_FALSE(push->appHash()) << "what was declared after it has gone before it";
      EXPECT_TRUE(push->recogidaDatos);
      push->setAppHash(text("again"));
      push->setDelegate(*host);
      push->onRegisterToken(text("token"));
    }
    void init() {}
    TestPush* push = nullptr;
    Host* host = nullptr;
  };
  auto parting = make<Parting>();
  parting->push = push.get();
  parting->host = &host;
  push->setAppHash(text("f00d"));
  push->registerLib = parting->self().as<platform::QuorvantisRegisterLib>();
  parting = {};
  end(push);
  EXPECT_EQ(TestPush::live, 0);
  EXPECT_EQ(host.heard.size(), 1U);
}

TEST_F(PushTest, IsKeptByTheAlertOnScreenUntilItsButtonIsTapped) {
  push->didReceiveRemoteNotification(dictionary(linkPayload("https://a.example/")));
  push->didReceiveRemoteNotification(dictionary(linkPayload("https://b.example/")));
  end(push);
  EXPECT_EQ(TestPush::live, 1);
  take({});
  ASSERT_NE(device.screen.find(1), nullptr);
  EXPECT_TRUE(device.screen.find(1)->fillsScreen);
  EXPECT_TRUE(device.screen.find(1)->animated);
  EXPECT_TRUE(device.screen.tap(1));
  EXPECT_EQ(TestPush::live, 1);
  EXPECT_TRUE(device.screen.tap(2));
  EXPECT_EQ(TestPush::live, 0);
  EXPECT_EQ(
      take({"opened", "alertHidden"}),
      (std::vector<Event>{device::events::opened("https://b.example/"), device::events::alertHidden(1),
                          device::events::opened("https://b.example/"), device::events::alertHidden(2)}));
}

TEST_F(PushTest, GetsNoNotificationAfterItsProcessHasEnded) {
  push->setDelegate(host);
  push->registerFinish();
  platform::simulated::deliverInForeground(dictionary(payload({})));
  EXPECT_EQ(host.heard.size(), 1u);
  device.endProcess();
  platform::simulated::deliverInForeground(dictionary(payload({})));
  EXPECT_EQ(host.heard.size(), 1u);
}

TEST_F(PushTest, CanEndDuringItsWork) {
  push->setAppHash(text("hash"));
  push->activePushNotifications(1);
  push->registerFinish();
  push->registerForRemoteNotificationsWithDeviceToken(data("\x01"));
  end(push);
  EXPECT_EQ(TestPush::live, 0);
  take({});
  settle();
  platform::simulated::deliverInForeground(dictionary(payload({})));
  EXPECT_TRUE(take({"received", "log", "authorizationRequested"}).empty());
}

TEST_F(PushTest, StaysUsableAfterARaise) {
  push->setAppHash(text("hash"));
  push->setDelegate(host);
  const auto deliver = [&](const json::Dictionary& aps) {
    return raisedBy([&] { push->didReceiveRemoteNotification(dictionary(payload(aps))); });
  };
  const auto passToken = [&] {
    return raisedBy([&] { push->registerForRemoteNotificationsWithDeviceToken(data("\x01")); });
  };

  device.facts.languages = std::vector<std::string>{};
  EXPECT_EQ(passToken(), "objectAtIndex:");
  EXPECT_EQ(stored("pushVersion"), "1.0");
  EXPECT_FALSE(stored("deviceUuid") || stored("tokenMovil"));
  EXPECT_TRUE(take({"request"}).empty());

  EXPECT_EQ(deliver({{"alert", "text"}, {"badge", 5}, {"type", "pushlib-normal"}}), "objectForKey:");
  EXPECT_EQ(device.application.badge, 0);
  EXPECT_EQ(deliver({{"alert", json::Dictionary{}}, {"type", 7}, {"badge", 5}}), "isEqualToString:");
  EXPECT_EQ(device.application.badge, 5);
  EXPECT_EQ(deliver({{"alert", json::Dictionary{}},
                     {"type", "pushlib-extras"},
                     {"extra1", "one"},
                     {"extra2", nullptr},
                     {"extra3", "three"}}),
            "setObject:forKey:");
  EXPECT_EQ(stored("pushExtra1"), "one");
  EXPECT_FALSE(stored("pushExtra3"));
  EXPECT_TRUE(take({"synchronized"}).empty());
  EXPECT_EQ(host.selectors(), std::vector<std::string>{"onGetToken:"});

  host.onMessage = [] { platform::doesNotRecognizeSelector({"boom"}); };
  EXPECT_EQ(passToken(), "boom");
  EXPECT_FALSE(stored("tokenMovil"));
  host = {};

  device.facts.languages = {{"es"}};
  EXPECT_EQ(passToken(), std::nullopt);
  EXPECT_EQ(deliver({}), std::nullopt);
  settle();
  EXPECT_EQ(host.selectors(),
            (std::vector<std::string>{"onGetToken:", "onReceiveNotification:", "onRegisterToken:"}));
  EXPECT_EQ(stored("idioma"), "es");
}

}  // namespace
}  // namespace quorvantis
