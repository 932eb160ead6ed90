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

  /// Asks for a device token; later the host's application delegate gets it, or an error.
  void registerForRemoteNotifications() const;

  /// openURL:options:completionHandler: exists on every supported system; still, ask respondsToSelector()
  /// first.
  static constexpr Selector openURLSelector{"openURL:options:completionHandler:"};

  /// Opens the address with empty options and a completion handler that does nothing. `url` may be nil: the
  /// call is made all the same.
  void openURL(const NSURL& url) const;
};

}  // namespace quorvantis::platform
