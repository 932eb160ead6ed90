#include "platform/UNUserNotificationCenter.h"

#import <UserNotifications/UserNotifications.h>

#import "platform/ios/CompletionHandler.h"
#include "platform/ios/bridge.h"

namespace quorvantis::platform {

using ios::objectOf;
using ios::retained;

UNUserNotificationCenter UNUserNotificationCenter::currentNotificationCenter() {
  return retained<UNUserNotificationCenter>([::UNUserNotificationCenter currentNotificationCenter]);
}

void UNUserNotificationCenter::setDelegate(const Object& delegate) const {
  [static_cast<::UNUserNotificationCenter*>(objectOf(*this)) setDelegate:objectOf(delegate)];
}

void UNUserNotificationCenter::requestAuthorizationWithOptions(
    UNAuthorizationOptions options,
    std::function<void(bool granted, const NSError& error)> completionHandler) const {
  [static_cast<::UNUserNotificationCenter*>(objectOf(*this))
      requestAuthorizationWithOptions:static_cast<::UNAuthorizationOptions>(options)
                    completionHandler:^(BOOL granted, ::NSError* error) {
                      completionHandler(granted, retained<NSError>(error));
                    }];
}

void UNNotificationPresentationHandler::operator()(UNNotificationPresentationOptions options) const {
  using Block = void (^)(::UNNotificationPresentationOptions);
  const auto block = (Block)[static_cast<QuorvantisPushCompletionHandler*>(objectOf(*this)) block];
  if (block) block(static_cast<::UNNotificationPresentationOptions>(options));
}

NSDictionary UNNotification::userInfo() const {
  ::UNNotification* notification = objectOf(*this);
  return retained<NSDictionary>([[[notification request] content] userInfo]);
}

UNNotification UNNotificationResponse::notification() const {
  return retained<UNNotification>([static_cast<::UNNotificationResponse*>(objectOf(*this)) notification]);
}

}  // namespace quorvantis::platform
