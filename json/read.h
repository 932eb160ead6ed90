// Reads JSON (RFC 8259) without recursion, so that no input can exhaust the stack. Any thread.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <variant>

#include "json/value.h"

namespace quorvantis::json {

/// Deeper values are refused, as the phone's own reader does.
inline constexpr std::size_t kDeepest = 512;

struct ReadOptions {
  bool refuseDuplicateKeys = false;   ///< Otherwise the last one counts.
  bool refuseWideIntegers = false;    ///< Whole numbers beyond signed 64 bits; otherwise they become reals,
  bool keepUnsignedIntegers = false;  ///< but for those that fit into unsigned 64 bits.
  std::size_t deepest = kDeepest;
};

struct Problem {
  std::size_t offset = 0;  ///< In bytes from the start.
  std::string reason;
  std::string remedy;               ///< What to write there, as a sentence.
  bool isNumberOutOfRange = false;  ///< Well-formed, and more than a real or 64 bits can hold.
};

/// Receives what is read, in the order of the text, with its position: the offset in bytes of a key's opening
/// quotation mark or of a value's first character. A key's value follows its key.
class Observer {
 public:
  virtual ~Observer() = default;
  /// `repeated`: the object already has this key.
  virtual void key(std::string_view /*key*/, std::size_t /*offset*/, bool /*repeated*/) {}
  /// Anything but an object or an array.
  virtual void scalar(std::size_t /*offset*/, const Value& /*value*/) {}
  virtual void begin(std::size_t /*offset*/, bool /*object*/) {}
  virtual void end() {}
};

/// The value of the text (which must be UTF-8, without a byte order mark), or what is wrong with it.
std::variant<Value, Problem> read(std::string_view text, ReadOptions options = {},
                                  Observer* observer = nullptr);

/// A position as editors show it, both numbers from 1; the column in characters.
struct Place {
  std::size_t line = 1;
  std::size_t column = 1;
};

/// `offset` is at most the text's size.
Place placeOf(std::string_view text, std::size_t offset);

}  // namespace quorvantis::json
