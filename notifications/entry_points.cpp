// Push: the entry points for notifications and for the user's taps on them.
#include "facade/Push.h"
#include "notifications/payload_keys.h"
#include "platform/dispatch.h"

namespace quorvantis {

using platform::NSDictionary;
using platform::NSString;
using platform::NSURL;
using platform::Object;
using platform::UIApplication;
using platform::UNNotification;
using platform::UNNotificationPresentationHandler;
using platform::UNNotificationResponse;
using platform::UNUserNotificationCenter;

namespace {

constexpr std::int64_t kOpeningDelay = 1'000'000'000;  // nanoseconds

}  // namespace

void Push::userNotificationCenterWillPresentNotification(
    const UNUserNotificationCenter& /*center*/, const UNNotification& notification,
    const UNNotificationPresentationHandler& withCompletionHandler) {
  if (activeInForegroundApp) withCompletionHandler(platform::UNNotificationPresentationOptionAlert);

  const NSDictionary userInfo = notification.userInfo();
  const auto aps = userInfo.objectForKey(payload::aps).as<NSDictionary>();
  if (!aps) return;
  if (aps.objectForKey(payload::contentAvailable)) return;
  didReceiveRemoteNotification(userInfo);
}

void Push::userNotificationCenterDidReceiveNotificationResponse(const UNUserNotificationCenter& /*center*/,
                                                                const UNNotificationResponse& response,
                                                                const Object& /*withCompletionHandler*/) {
  const NSDictionary userInfo = response.notification().userInfo();
  const auto aps = userInfo.objectForKey(payload::aps).as<NSDictionary>();
  if (!aps) return;
  if (!aps.objectForKey(payload::alert)) return;
  const auto type = aps.objectForKey(payload::type).as<NSString>();
  if (!type) return;
  if (!type.isEqualToString(payload::typeOpenURL)) return;
  const auto link = aps.objectForKey(payload::urlnoti).as<NSString>();
  if (!link) return;

  dirAAbrir = link;
  const UIApplication application = UIApplication::sharedApplication();
  const NSURL url = NSURL::URLWithString(dirAAbrir);
  platform::dispatch_after_main(kOpeningDelay, [application, url] {
    if (application.respondsToSelector(UIApplication::openURLSelector)) application.openURL(url);
  });
}

void Push::applicationDidReceiveRemoteNotification(const UIApplication& /*application*/,
                                                   const NSDictionary& userInfo,
                                                   const Object& /*fetchCompletionHandler*/) {
  didReceiveRemoteNotification(userInfo);
}

void Push::resetBadge() {
  UIApplication::sharedApplication().setApplicationIconBadgeNumber(0);
}

}  // namespace quorvantis
