// Text, and the seam's operations on it. Immutable; usable from any thread.
#pragma once

#include <atomic>
#include <initializer_list>
#include <string_view>

#include "platform/NSData.h"
#include "platform/Object.h"

namespace quorvantis::platform {

enum class NSComparisonResult : int { ascending = -1, same = 0, descending = 1 };

/// NSNumericSearch: runs of digits compare as numbers.
inline constexpr unsigned long NSNumericSearch = 64;

class QUORVANTIS_PUSH_API NSString : public Object {
 public:
  using Object::Object;

  /// A new string with these characters. `text` must be valid UTF-8.
  static NSString stringWithUTF8String(std::string_view text);

  /// initWithData:encoding: with NSUTF8StringEncoding. Nil when the bytes are not UTF-8, or `data` is nil.
  static NSString initWithData(const NSData& data);

  /// `format` with each "%@" replaced by the description of the next argument, (null) for nil. Other
  /// conversions are not supported. The number of arguments must equal that of "%@".
  static NSString stringWithFormat(std::string_view format, std::initializer_list<Object> arguments);

  /// Raises if the receiver is not a string.
  [[nodiscard]] bool isEqualToString(const NSString& other) const;

  /// compare:options:. With nil as the receiver: `same`.
  [[nodiscard]] NSComparisonResult compare(const NSString& other, unsigned long options) const;

  [[nodiscard]] NSString stringByReplacingOccurrencesOfString(const NSString& target,
                                                              const NSString& withString) const;
};

/// A string constant. Its object is created on first use and lives as long as the process. Any thread.
class ConstantString {
 public:
  constexpr explicit ConstantString(std::string_view text) : text_(text) {}

  operator const NSString&() const {  // NOLINT(google-explicit-constructor): it stands for the object
    const NSString* made = made_.load(std::memory_order_acquire);
    return made != nullptr ? *made : make();
  }

  /// The characters, in static storage.
  [[nodiscard]] constexpr std::string_view text() const { return text_; }

 private:
  [[nodiscard]] const NSString& make() const {
    const auto* made = new NSString(NSString::stringWithUTF8String(text_));
    const NSString* first = nullptr;
    if (made_.compare_exchange_strong(first, made, std::memory_order_acq_rel)) return *made;
    delete made;
    return *first;
  }

  std::string_view text_;
  mutable std::atomic<const NSString*> made_{nullptr};
};

}  // namespace quorvantis::platform
