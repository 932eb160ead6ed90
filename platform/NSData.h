// Bytes. Immutable; usable from any thread.
#pragma once

#include <cstddef>

#include "platform/Object.h"

namespace quorvantis::platform {

class NSString;

class QUORVANTIS_PUSH_API NSData : public Object {
 public:
  using Object::Object;

  [[nodiscard]] std::size_t length() const;

  /// Valid as long as the object. May be nullptr when it is empty.
  [[nodiscard]] const unsigned char* bytes() const;

  /// The platform's textual description; before system version 13.0: hexadecimal groups of four bytes,
  /// separated by blanks, in angle brackets.
  [[nodiscard]] NSString description() const;
};

/// Held in a field that nothing fills; it needs no operation.
class NSMutableData : public NSData {
 public:
  using NSData::NSData;
};

}  // namespace quorvantis::platform
