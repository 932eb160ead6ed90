// A window of the application. It is on screen only as long as a reference to it exists. Main thread.
#pragma once

#include "platform/UIScreen.h"
#include "platform/UIViewController.h"

namespace quorvantis::platform {

class QUORVANTIS_PUSH_API UIWindow : public Object {
 public:
  using Object::Object;

  static UIWindow initWithFrame(CGRect frame);

  void setRootViewController(const UIViewController& controller) const;
  [[nodiscard]] UIViewController rootViewController() const;
  void setWindowLevel(CGFloat level) const;
  void makeKeyAndVisible() const;
  void setHidden(bool hidden) const;
};

/// The level of the system's own alerts.
QUORVANTIS_PUSH_API CGFloat UIWindowLevelAlert();

}  // namespace quorvantis::platform
