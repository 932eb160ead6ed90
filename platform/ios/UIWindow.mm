#include "platform/UIWindow.h"

#import <UIKit/UIKit.h>

#include "platform/ios/bridge.h"

namespace quorvantis::platform {

namespace {

::UIWindow* windowOf(const UIWindow& handle) { return ios::objectOf(handle); }

}  // namespace

UIWindow UIWindow::initWithFrame(CGRect frame) {
  const ::CGRect rectangle = {{frame.x, frame.y}, {frame.width, frame.height}};
  return ios::adopted<UIWindow>([[::UIWindow alloc] initWithFrame:rectangle]);
}

void UIWindow::setRootViewController(const UIViewController& controller) const {
  [windowOf(*this) setRootViewController:ios::objectOf(controller)];
}

UIViewController UIWindow::rootViewController() const {
  return ios::retained<UIViewController>([windowOf(*this) rootViewController]);
}

void UIWindow::setWindowLevel(CGFloat level) const { [windowOf(*this) setWindowLevel:level]; }

void UIWindow::makeKeyAndVisible() const { [windowOf(*this) makeKeyAndVisible]; }

void UIWindow::setHidden(bool hidden) const { [windowOf(*this) setHidden:hidden]; }

CGFloat UIWindowLevelAlert() { return ::UIWindowLevelAlert; }

}  // namespace quorvantis::platform
