#include "platform/UIApplication.h"

#include "device/device.h"
#include "platform/simulated/values.h"

namespace quorvantis::platform {

namespace {

using device::Device;

class ApplicationInstance final : public simulated::Instance {
 public:
  [[nodiscard]] bool respondsToSelector(Selector selector) const override {
    return selector == UIApplication::openURLSelector && Device::current().application.canOpenURL;
  }
};

}  // namespace

UIApplication UIApplication::sharedApplication() {
  static const auto& application =
      *new UIApplication(simulated::makeInstance<UIApplication, ApplicationInstance>());
  return application;
}

UIApplicationState UIApplication::applicationState() const {
  if (!*this) return UIApplicationState::active;
  return static_cast<UIApplicationState>(Device::current().application.state);
}

void UIApplication::setApplicationIconBadgeNumber(NSInteger number) const {
  if (*this) Device::current().setBadge(number);
}

void UIApplication::registerForRemoteNotifications() const {
  if (*this) Device::current().registerForRemoteNotifications();
}

void UIApplication::openURL(const NSURL& url) const {
  if (!*this) return;
  if (!respondsToSelector(openURLSelector)) doesNotRecognizeSelector(openURLSelector);
  Device::current().open(simulated::textOf(url));
}

}  // namespace quorvantis::platform
