// The documents' sample host on the simulated phone: each recipe works.
#import "docs/sample-host/AppDelegate.m"
#import "docs/sample-host/SceneDelegate.m"
#import "docs/sample-host/parts/SwitchingOff.m"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "device/events.h"
#include "facade/shared_slot.h"
#include "tests/gnustep/standins.h"

using quorvantis::standins::connectScene;
using quorvantis::standins::deliverInForeground;
using quorvantis::standins::deliverResponse;

namespace {

NSDictionary* linkPayload() {
  return @{
    @"aps" : @{
      @"alert" : @{@"title" : @"News", @"body" : @"Read them?"},
      @"type" : @"pushlib-abrirurl",
      @"urlnoti" : @"https://example.com/a"
    }
  };
}

class SampleHost : public testing::Test {
 protected:
  SampleHost() {
    quorvantis::standins::useDevice(&device);
    host = [[AppDelegate alloc] init];
    [[UIApplication sharedApplication] setDelegate:host];
    const auto dataFrom = [](const std::string& bytes) {
      return [NSData dataWithBytes:bytes.data() length:bytes.size()];
    };
    device.applicationDelegate = {
        [this, dataFrom](const std::string& token) {
          [host application:[UIApplication sharedApplication]
              didRegisterForRemoteNotificationsWithDeviceToken:dataFrom(token)];
        },
        [this](const std::string& error) {
          [host application:[UIApplication sharedApplication]
              didFailToRegisterForRemoteNotificationsWithError:quorvantis::standins::errorFrom(error)];
        }};
  }

  ~SampleHost() override {
    device.endProcess();
    quorvantis::standins::disconnectScenes();
    [[Push shared] setDelegate:nil];
    quorvantis::emptySharedSlot();
    [[UIApplication sharedApplication] setDelegate:nil];
    [[UNUserNotificationCenter currentNotificationCenter] setDelegate:nil];
    [host release];
    [pool drain];
    quorvantis::standins::useDevice(nullptr);
  }

  void launch() { [host application:[UIApplication sharedApplication] didFinishLaunchingWithOptions:nil]; }

  void settle() {
    device.queue.settle([](const auto& task) { task(); });
  }

  /// The values of one key in the events of a kind since the last call.
  std::vector<std::string> seen(const std::string& kind, const std::string& key) {
    std::vector<std::string> values;
    for (const auto& event : device.record.take()) {
      if (*event.at("event").get<std::string>() != kind) continue;
      const auto* text = event.at(key).get<std::string>();
      values.push_back(text != nullptr ? *text : "");
    }
    return values;
  }

  void clear() { static_cast<void>(device.record.take()); }

  id delegateOfTheCenter() { return [[UNUserNotificationCenter currentNotificationCenter] delegate]; }

  NSAutoreleasePool* pool = [[NSAutoreleasePool alloc] init];
  quorvantis::device::Device device;
  AppDelegate* host = nil;
};

TEST_F(SampleHost, RegistersItsTokenAndKeepsTheCenter) {
  launch();
  EXPECT_EQ(delegateOfTheCenter(), host);
  settle();
  EXPECT_EQ(delegateOfTheCenter(), host) << "Push has it, and the host has not taken it back";
  EXPECT_EQ(seen("request", "task"), std::vector<std::string>{"pushlibRegistrarToken"});

  device.facts.token = std::nullopt;
  launch();
  settle();
  EXPECT_EQ(delegateOfTheCenter(), host) << "no token comes, and Push has the center";

  device.authorization->error = "no";
  connectScene();
  launch();
  settle();
  EXPECT_NE(delegateOfTheCenter(), host) << "neither a token nor a failure comes";
  for (UIScene* scene in [[UIApplication sharedApplication] connectedScenes]) {
    [[scene delegate] sceneDidBecomeActive:scene];
  }
  EXPECT_EQ(delegateOfTheCenter(), host);
}

TEST_F(SampleHost, SendsATokenAgainThatWasNotConfirmed) {
  const auto sentAtLaunch = [this] {
    clear();
    launch();
    settle();
    return seen("request", "task");
  };
  const auto confirm = [](SEL callback) { [[Push shared] performSelector:callback withObject:@"00ff"]; };
  using Tasks = std::vector<std::string>;

  EXPECT_EQ(sentAtLaunch(), Tasks{"pushlibRegistrarToken"});
  EXPECT_EQ(sentAtLaunch(), Tasks{"pushlibRegistrarToken"}) << "the server has not confirmed it";
  confirm(@selector(onRegisterToken:));
  EXPECT_EQ(sentAtLaunch(), Tasks{}) << "it is confirmed";

  device.facts.token = "another";
  EXPECT_EQ(sentAtLaunch(), Tasks{"pushlibCambioToken"});
  EXPECT_EQ(sentAtLaunch(), Tasks{"pushlibRegistrarToken"}) << "the change was not confirmed";
  confirm(@selector(onUpdateToken:));
  EXPECT_EQ(sentAtLaunch(), Tasks{});

  switchNotificationsOff();
  EXPECT_EQ(sentAtLaunch(), Tasks{"pushlibRegistrarToken"}) << "switched on again";
}

TEST_F(SampleHost, ATapThatLaunchesItOpensItsLink) {
  launch();
  deliverResponse(linkPayload(), @"com.apple.UNNotificationDefaultActionIdentifier");
  device.queue.advance(std::chrono::seconds(1), [](const auto& task) { task(); });
  const auto events = device.record.take();
  std::vector<std::string> names;
  for (const auto& event : events) names.push_back(*event.at("event").get<std::string>());
  EXPECT_EQ(std::count(names.begin(), names.end(), "opened"), 1);
  EXPECT_EQ(std::count(names.begin(), names.end(), "completed"), 1) << "the handler is called once";
}

TEST_F(SampleHost, AnswersEachForegroundNotificationOnce) {
  launch();
  settle();
  clear();
  for (const BOOL shown : {YES, NO}) {
    [[Push shared] activePushNotificationsInForegroundApp:shown];
    deliverInForeground(@{@"aps" : @{@"alert" : @{@"title" : @"t"}}});
    std::vector<std::int64_t> options;
    for (const auto& event : device.record.take()) {
      if (*event.at("event").get<std::string>() == "presented")
        options.push_back(*event.at("options").get<std::int64_t>());
    }
    EXPECT_EQ(options, std::vector<std::int64_t>{shown ? 4 : 0});
  }
}

TEST_F(SampleHost, CompletesABackgroundNotificationOnce) {
  launch();
  __block int completed = 0;
  [host application:[UIApplication sharedApplication]
      didReceiveRemoteNotification:@{
        @"aps" : @{@"alert" : @{}, @"content-available" : @1, @"badge" : @3}
      }
      fetchCompletionHandler:^(UIBackgroundFetchResult) {
        ++completed;
      }];
  EXPECT_EQ(completed, 1);
  EXPECT_EQ(device.application.badge, 3);
}

TEST_F(SampleHost, ShowsALinkInItsScene) {
  launch();
  UISceneConfiguration* configuration =
      [host application:[UIApplication sharedApplication]
          configurationForConnectingSceneSession:[[[UISceneSession alloc] init] autorelease]
                                         options:[[[UISceneConnectionOptions alloc] init] autorelease]];
  EXPECT_EQ([configuration name], nil) << "a name is looked up in the Info.plist, which has none";
  settle();
  connectScene();
  clear();
  deliverInForeground(linkPayload());
  ASSERT_EQ(device.screen.alerts(), std::vector<int>{1}) << "the host's alert, and not the library's";
  EXPECT_EQ(device.screen.find(1)->title, "News");
  EXPECT_EQ(device.screen.find(1)->message, "Read them?");
  EXPECT_EQ(device.screen.find(1)->windowLevel, 0);
  clear();
  device.screen.tap(1);
  EXPECT_EQ(seen("opened", "url"), std::vector<std::string>{"https://example.com/a"});

  deliverInForeground(@{@"aps" : @{@"alert" : @{}, @"type" : @"pushlib-abrirurl", @"urlnoti" : @7}});
  EXPECT_TRUE(device.screen.alerts().empty()) << "a link that is no text";
}

TEST_F(SampleHost, ShowsASecondLinkAboveTheFirst) {
  launch();
  settle();
  connectScene();
  deliverInForeground(linkPayload());
  deliverInForeground(
      @{@"aps" : @{@"alert" : @{}, @"type" : @"pushlib-abrirurl", @"urlnoti" : @"https://example.com/b"}});
  ASSERT_EQ(device.screen.alerts(), (std::vector<int>{1, 2}));
  clear();
  device.screen.tap(2);
  device.screen.tap(1);
  EXPECT_EQ(seen("opened", "url"),
            (std::vector<std::string>{"https://example.com/b", "https://example.com/a"}));
}

TEST_F(SampleHost, WithoutScenesTheLibrarysAlertIsVisible) {
  launch();
  settle();
  deliverInForeground(linkPayload());
  ASSERT_EQ(device.screen.alerts(), std::vector<int>{1});
  EXPECT_EQ(device.screen.find(1)->windowLevel, 2001);
}

}  // namespace
