#include "platform/UNUserNotificationCenter.h"

#include <mutex>

#include "device/device.h"
#include "device/events.h"
#include "platform/simulated/Front.h"
#include "platform/simulated/controls.h"
#include "platform/simulated/values.h"

namespace quorvantis::platform {

namespace {

using device::Device;
using namespace simulated;

class CenterInstance final : public Instance {
 public:
  void setDelegate(const Object& delegate) {
    const std::lock_guard lock(mutex_);
    delegate_ = WeakObject(delegate);
    process_ = Device::current().process();
  }
  [[nodiscard]] Object delegate() const {
    const std::lock_guard lock(mutex_);
    return process_ == Device::current().process() ? delegate_.lock() : Object();
  }

 private:
  mutable std::mutex mutex_;
  WeakObject delegate_;
  std::uint64_t process_ =
      0;  // that set the delegate: it is not the next process's, even if something keeps it alive
};

class NotificationInstance final : public Instance {
 public:
  explicit NotificationInstance(NSDictionary itsUserInfo) : userInfo(std::move(itsUserInfo)) {}

  const NSDictionary userInfo;
};

class ResponseInstance final : public Instance {
 public:
  explicit ResponseInstance(UNNotification itsNotification) : notification(std::move(itsNotification)) {}

  const UNNotification notification;
};

UNNotification makeNotification(const NSDictionary& userInfo) {
  return makeInstance<UNNotification, NotificationInstance>(userInfo);
}

}  // namespace

UNUserNotificationCenter UNUserNotificationCenter::currentNotificationCenter() {
  static const auto& center =
      *new UNUserNotificationCenter(makeInstance<UNUserNotificationCenter, CenterInstance>());
  return center;
}

void UNUserNotificationCenter::setDelegate(const Object& delegate) const {
  if (*this) known<CenterInstance>(*this)->setDelegate(delegate);
}

void UNUserNotificationCenter::requestAuthorizationWithOptions(
    UNAuthorizationOptions options,
    std::function<void(bool granted, const NSError& error)> completionHandler) const {
  if (!*this) return;
  Device::current().requestAuthorization(
      static_cast<std::int64_t>(options),
      [answer = std::move(completionHandler)](bool granted, const std::optional<std::string>& error) {
        answer(granted, stringFrom(error).as<NSError>());
      });
}

void UNNotificationPresentationHandler::operator()(UNNotificationPresentationOptions options) const {
  if (*this) Device::current().record.add(device::events::presented(static_cast<std::int64_t>(options)));
}

NSDictionary UNNotification::userInfo() const {
  return *this ? known<NotificationInstance>(*this)->userInfo : NSDictionary();
}

UNNotification UNNotificationResponse::notification() const {
  return *this ? known<ResponseInstance>(*this)->notification : UNNotification();
}

namespace simulated {

void deliverInForeground(const NSDictionary& userInfo) {
  const auto center = UNUserNotificationCenter::currentNotificationCenter();
  const auto handler = makeInstance<UNNotificationPresentationHandler, Instance>();
  sendTo<UNUserNotificationCenterDelegate>(
      known<CenterInstance>(center)->delegate(),
      {"userNotificationCenter:willPresentNotification:withCompletionHandler:"}, [&](auto& delegate) {
        delegate.userNotificationCenterWillPresentNotification(center, makeNotification(userInfo), handler);
      });
}

void deliverResponse(const NSDictionary& userInfo) {
  const auto center = UNUserNotificationCenter::currentNotificationCenter();
  const auto response = makeInstance<UNNotificationResponse, ResponseInstance>(makeNotification(userInfo));
  const Object handler = makeInstance<Object, Instance>();
  sendTo<UNUserNotificationCenterDelegate>(
      known<CenterInstance>(center)->delegate(),
      {"userNotificationCenter:didReceiveNotificationResponse:withCompletionHandler:"}, [&](auto& delegate) {
        delegate.userNotificationCenterDidReceiveNotificationResponse(center, response, handler);
      });
}

}  // namespace simulated
}  // namespace quorvantis::platform
