// Collections by key. An NSDictionary is usable from any thread, an NSMutableDictionary by one thread at a
// time.
#pragma once

#include <functional>

#include "platform/NSString.h"

namespace quorvantis::platform {

class QUORVANTIS_PUSH_API NSDictionary : public Object {
 public:
  using Object::Object;

  /// The value itself, or nil. Raises if the receiver has no such operation.
  [[nodiscard]] Object objectForKey(const NSString& key) const;

  /// Calls `visit` with each key, in the dictionary's own order, on the caller's thread.
  void enumerateKeys(const std::function<void(const NSString& key)>& visit) const;

  /// Whether an object is a dictionary (isKindOfClass:). Nil is not.
  [[nodiscard]] static bool isKindOf(const Object& object);
};

class QUORVANTIS_PUSH_API NSMutableDictionary : public NSDictionary {
 public:
  using NSDictionary::NSDictionary;

  /// A new, empty one.
  static NSMutableDictionary dictionary();

  /// Stores the object itself under the key, replacing an earlier one. Neither may be nil. Raises if the
  /// receiver is not a mutable dictionary.
  void setObject(Object object, const NSString& forKey) const;

  /// An immutable dictionary of the same keys and the same objects.
  [[nodiscard]] NSDictionary copy() const;
};

}  // namespace quorvantis::platform
