// The application's standard user defaults, which outlive the process. Any thread.
#pragma once

#include "platform/NSString.h"

namespace quorvantis::platform {

class QUORVANTIS_PUSH_API NSUserDefaults : public Object {
 public:
  using Object::Object;

  static NSUserDefaults standardUserDefaults();

  /// Nil when nothing is stored under the key.
  [[nodiscard]] Object objectForKey(const NSString& key) const;

  /// Visible to every reader at once. A nil object removes the key. Raises for a value that is not a
  /// property-list value.
  void setObject(const Object& object, const NSString& forKey) const;

  /// Returns when everything that was set is on disk; false when it could not be written.
  bool synchronize() const;  // NOLINT(modernize-use-nodiscard): the platform's callers ignore it
};

}  // namespace quorvantis::platform
