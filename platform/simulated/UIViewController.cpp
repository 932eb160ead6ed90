#include "platform/UIViewController.h"

#include "device/device.h"
#include "platform/simulated/UIKitInstances.h"

namespace quorvantis::platform {

using namespace simulated;

UIViewController UIViewController::new_() {
  return makeInstance<UIViewController, ViewControllerInstance>();
}

void UIViewController::presentViewController(const UIViewController& viewControllerToPresent,
                                             bool animated) const {
  if (!*this) return;
  WindowInstance* window = known<ViewControllerInstance>(*this)->window;
  if (window == nullptr || !window->visible) return;  // as on a phone, only what is in a window is visible

  const auto* controller = known<AlertControllerInstance>(viewControllerToPresent);
  device::Alert alert;
  alert.title = controller->title;
  alert.message = controller->message;
  alert.windowLevel = window->level;
  alert.fillsScreen = window->fillsScreen;
  alert.animated = animated;
  for (const UIAlertAction& action : controller->actions) {
    alert.buttons.push_back(known<AlertActionInstance>(action)->title);
  }
  if (!controller->actions.empty()) {
    alert.onTap = [action = controller->actions.front()] { known<AlertActionInstance>(action)->handler(); };
  }
  window->alert = device::Device::current().screen.present(std::move(alert));
}

}  // namespace quorvantis::platform
