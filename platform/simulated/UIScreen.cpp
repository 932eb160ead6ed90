#include "platform/UIScreen.h"

#include "device/screen.h"
#include "platform/simulated/Instance.h"

namespace quorvantis::platform {

UIScreen UIScreen::mainScreen() {
  static const auto& screen = *new UIScreen(simulated::makeInstance<UIScreen, simulated::Instance>());
  return screen;
}

CGRect UIScreen::bounds() const {
  if (!*this) return {};
  const auto [x, y, width, height] = device::kScreenBounds;
  return {x, y, width, height};
}

}  // namespace quorvantis::platform
