// The notification center: permission, and the delivery of notifications.
#pragma once

#include <functional>

#include "platform/NSDictionary.h"
#include "platform/NSError.h"

namespace quorvantis::platform {

using UNAuthorizationOptions = unsigned long;
inline constexpr UNAuthorizationOptions UNAuthorizationOptionBadge = 1;
inline constexpr UNAuthorizationOptions UNAuthorizationOptionSound = 2;
inline constexpr UNAuthorizationOptions UNAuthorizationOptionAlert = 4;

using UNNotificationPresentationOptions = unsigned long;
inline constexpr UNNotificationPresentationOptions UNNotificationPresentationOptionAlert = 4;

class UNUserNotificationCenter;
class UNNotification;
class UNNotificationResponse;
class UNNotificationPresentationHandler;

/// What the center sends to its delegate, on the main thread.
class QUORVANTIS_PUSH_API UNUserNotificationCenterDelegate {
 public:
  /// A notification arrived while the application is in the foreground.
  virtual void userNotificationCenterWillPresentNotification(
      const UNUserNotificationCenter& center, const UNNotification& notification,
      const UNNotificationPresentationHandler& withCompletionHandler) = 0;

  /// The user answered a notification. The handler is a block without arguments.
  virtual void userNotificationCenterDidReceiveNotificationResponse(const UNUserNotificationCenter& center,
                                                                    const UNNotificationResponse& response,
                                                                    const Object& withCompletionHandler) = 0;

 protected:
  ~UNUserNotificationCenterDelegate() = default;
};

class QUORVANTIS_PUSH_API UNUserNotificationCenter : public Object {
 public:
  using Object::Object;

  /// Any thread.
  static UNUserNotificationCenter currentNotificationCenter();

  /// The delegate, a UNUserNotificationCenterDelegate, is not retained. Any thread.
  void setDelegate(const Object& delegate) const;

  /// Asks the user, once per installation; `completionHandler` runs later, on any thread. A nil error means
  /// that the request itself worked, whatever the user said.
  void requestAuthorizationWithOptions(
      UNAuthorizationOptions options,
      std::function<void(bool granted, const NSError& error)> completionHandler) const;
};

/// The block that tells the system how to present a notification in the foreground. Main thread.
class QUORVANTIS_PUSH_API UNNotificationPresentationHandler : public Object {
 public:
  using Object::Object;

  void operator()(UNNotificationPresentationOptions options) const;
};

class QUORVANTIS_PUSH_API UNNotification : public Object {
 public:
  using Object::Object;

  /// request.content.userInfo: the payload as it was delivered.
  [[nodiscard]] NSDictionary userInfo() const;
};

class QUORVANTIS_PUSH_API UNNotificationResponse : public Object {
 public:
  using Object::Object;

  [[nodiscard]] UNNotification notification() const;
};

}  // namespace quorvantis::platform
