#include "platform/UIScreen.h"

#include "platform/simulated/Instance.h"

namespace quorvantis::platform {

UIScreen UIScreen::mainScreen() {
  static const auto& screen = *new UIScreen(simulated::makeInstance<UIScreen, simulated::Instance>());
  return screen;
}

CGRect UIScreen::bounds() const {
  return *this ? CGRect{0, 0, 390, 844} : CGRect{};
}

}  // namespace quorvantis::platform
