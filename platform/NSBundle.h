// The bundles loaded in this process. Any thread.
#pragma once

#include "platform/Class.h"
#include "platform/NSDictionary.h"

namespace quorvantis::platform {

/// In an information dictionary: the version that users see, a string.
inline constinit const ConstantString CFBundleShortVersionString{"CFBundleShortVersionString"};

class QUORVANTIS_PUSH_API NSBundle : public Object {
 public:
  using Object::Object;

  /// The application's.
  static NSBundle mainBundle();
  /// The one whose code defines the class.
  static NSBundle bundleForClass(Class aClass);
  /// Nil when no bundle with that identifier is loaded.
  static NSBundle bundleWithIdentifier(const NSString& identifier);

  [[nodiscard]] NSDictionary infoDictionary() const;
};

}  // namespace quorvantis::platform
