// The user's region. Any thread.
#pragma once

#include "platform/NSString.h"

namespace quorvantis::platform {

class QUORVANTIS_PUSH_API NSLocale : public Object {
 public:
  using Object::Object;

  static NSLocale currentLocale();

  /// The value for NSLocaleCountryCode: the region's ISO 3166 code, nil when the locale has none.
  [[nodiscard]] NSString countryCode() const;
};

}  // namespace quorvantis::platform
