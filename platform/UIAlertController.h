// An alert and its buttons. Main thread.
#pragma once

#include <functional>

#include "platform/NSNumber.h"
#include "platform/NSString.h"
#include "platform/UIViewController.h"

namespace quorvantis::platform {

enum class UIAlertActionStyle : NSInteger { default_ = 0 };
enum class UIAlertControllerStyle : NSInteger { alert = 1 };

class QUORVANTIS_PUSH_API UIAlertAction : public Object {
 public:
  using Object::Object;

  /// `handler` runs when the user taps the button, and is released with the action, after the alert was
  /// dismissed.
  static UIAlertAction actionWithTitle(const NSString& title, UIAlertActionStyle style,
                                       std::function<void()> handler);
};

class QUORVANTIS_PUSH_API UIAlertController : public UIViewController {
 public:
  using UIViewController::UIViewController;

  /// `title` and `message` may be nil.
  static UIAlertController alertControllerWithTitle(const NSString& title, const NSString& message,
                                                    UIAlertControllerStyle preferredStyle);

  void addAction(const UIAlertAction& action) const;
};

}  // namespace quorvantis::platform
