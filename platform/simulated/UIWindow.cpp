#include "platform/UIWindow.h"

#include "device/device.h"
#include "platform/simulated/UIKitInstances.h"

namespace quorvantis::platform {

using simulated::known;
using simulated::ViewControllerInstance;
using simulated::WindowInstance;

void simulated::WindowInstance::setRoot(UIViewController controller) {
  if (root && known<ViewControllerInstance>(root)->window == this) {
    known<ViewControllerInstance>(root)->window = nullptr;
  }
  root = std::move(controller);
  if (root) known<ViewControllerInstance>(root)->window = this;
}

UIWindow UIWindow::initWithFrame(CGRect frame) {
  return simulated::makeInstance<UIWindow, WindowInstance>(
      device::Frame{frame.x, frame.y, frame.width, frame.height} == device::kScreenBounds);
}

void UIWindow::setRootViewController(const UIViewController& controller) const {
  if (*this) known<WindowInstance>(*this)->setRoot(controller);
}

UIViewController UIWindow::rootViewController() const {
  return *this ? known<WindowInstance>(*this)->root : UIViewController();
}

void UIWindow::setWindowLevel(CGFloat level) const {
  if (*this) known<WindowInstance>(*this)->level = level;
}

void UIWindow::makeKeyAndVisible() const {
  if (*this) known<WindowInstance>(*this)->visible = true;
}

void UIWindow::setHidden(bool hidden) const {
  if (!*this) return;
  auto* window = known<WindowInstance>(*this);
  window->visible = !hidden;
  if (hidden && window->alert != 0) device::Device::current().screen.hide(std::exchange(window->alert, 0));
}

CGFloat UIWindowLevelAlert() {
  return device::kAlertWindowLevel;
}

}  // namespace quorvantis::platform
