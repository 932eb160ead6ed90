// The running application. Main thread.
#pragma once

#include "platform/NSNumber.h"
#include "platform/NSURL.h"

namespace quorvantis::platform {

enum class UIApplicationState : NSInteger { active = 0, inactive = 1, background = 2 };

class QUORVANTIS_PUSH_API UIApplication : public Object {
 public:
  using Object::Object;

  static UIApplication sharedApplication();

  [[nodiscard]] UIApplicationState applicationState() const;

  void setApplicationIconBadgeNumber(NSInteger number) const;

  /// Asks for a device token; it comes to the host's application delegate later, or a failure does.
  void registerForRemoteNotifications() const;

  /// openURL:options:completionHandler: is there on every supported system; ask respondsToSelector() before.
  static constexpr Selector openURLSelector{"openURL:options:completionHandler:"};

  /// Opens the address with empty options and a completion handler that does nothing. `url` may be nil: the
  /// system is asked all the same.
  void openURL(const NSURL& url) const;
};

}  // namespace quorvantis::platform
