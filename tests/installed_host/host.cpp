// An application as an integrator writes it, against the installed package: host SETTINGS_FOLDER. It
// registers a simulated device, without a server, and gets a notification.
#include <cstdio>
#include <optional>
#include <string>

#include "device/device.h"
#include "facade/Push.h"
#include "platform/simulated/controls.h"
#include "platform/simulated/values.h"

namespace device = quorvantis::device;
namespace json = quorvantis::json;
namespace platform = quorvantis::platform;
namespace simulated = quorvantis::platform::simulated;

struct Host {
  std::optional<std::string> token;
  std::optional<json::Value> report;

  void onGetToken(const platform::NSString& deviceToken) { token = simulated::textOf(deviceToken); }
  void onReceiveNotification(const platform::NSDictionary& notification) {
    report = simulated::valueFrom(notification);
  }
};

int main(int count, char** arguments) {
  if (count != 2) return 2;
  device::Device phone(std::string(arguments[1]) + "/settings.sqlite");
  phone.facts.token = "\x01\xab";
  phone.applicationDelegate.didRegister = [](const std::string& token) {
    const auto data = simulated::objectFrom(json::Data{token}).as<platform::NSData>();
    quorvantis::Push::shared().registerForRemoteNotificationsWithDeviceToken(data);
  };
  const auto runAll = [&phone] { phone.queue.settle([](const auto& task) { task(); }); };

  Host host;
  auto& push = quorvantis::Push::shared();
  push.setAppHash(platform::NSString::stringWithUTF8String("f00d"));
  push.setDelegate(host);
  push.activePushNotifications(1);
  runAll();
  if (host.token != "01ab") {
    std::puts("the host's delegate did not get the device token");
    return 1;
  }

  const auto payload = simulated::objectFrom(
      json::Dictionary{{"aps", json::Dictionary{{"alert", json::Dictionary{{"body", "Hello"}}}}}});
  simulated::deliverInForeground(payload.as<platform::NSDictionary>());
  runAll();
  if (!host.report) {
    std::puts("the host's delegate did not get the notification");
    return 1;
  }
  std::puts("registered and notified");
  return 0;
}
