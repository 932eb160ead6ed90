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

  /// A new text with these characters. `text` is valid UTF-8.
  static NSString stringWithUTF8String(std::string_view text);

  /// initWithData:encoding: with NSUTF8StringEncoding. Nil when the bytes are no UTF-8, or `data` is nil.
  static NSString initWithData(const NSData& data);

  /// `format` with each "%@" replaced by the description of the next argument, nil's being (null). Other
  /// conversions are not understood. There are as many arguments as "%@".
  static NSString stringWithFormat(std::string_view format, std::initializer_list<Object> arguments);

  /// Raises if the receiver is no text.
  [[nodiscard]] bool isEqualToString(const NSString& other) const;

  /// compare:options:. With nil as the receiver: `same`.
  [[nodiscard]] NSComparisonResult compare(const NSString& other, unsigned long options) const;

  [[nodiscard]] NSString stringByReplacingOccurrencesOfString(const NSString& target,
                                                              const NSString& withString) const;
};

/// A text that is written down in the code. Its object is made when it is first asked for, is the same one
/// from then on, and lives as long as the process. Any thread.
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
