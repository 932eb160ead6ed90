// A JSON or property-list value, for payloads, answers, settings and events outside the library's core. A
// plain regular type; distinct values may be used from distinct threads.
#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <utility>
#include <variant>
#include <vector>

namespace quorvantis::json {

class Value;

/// Bytes, which property lists have and JSON does not.
struct Data {
  std::string bytes;

  friend bool operator==(const Data&, const Data&) = default;
};

using Array = std::vector<Value>;
/// Sorted by code point, as UTF-8's byte order is.
using Dictionary = std::map<std::string, Value, std::less<>>;

class Value {
 public:
  using Variant = std::variant<std::nullptr_t, bool, std::int64_t, std::uint64_t, double, std::string, Data,
                               Array, Dictionary>;

  Value() = default;
  Value(std::nullptr_t) {}
  Value(bool boolean) : variant_(boolean) {}
  Value(int number) : variant_(std::int64_t{number}) {}
  Value(std::int64_t number) : variant_(number) {}
  /// Whole numbers that fit are signed ones.
  Value(std::uint64_t number) {
    if (std::in_range<std::int64_t>(number)) {
      variant_ = static_cast<std::int64_t>(number);
    } else {
      variant_ = number;
    }
  }
  Value(double number) : variant_(number) {}
  Value(const char* text) : variant_(std::string(text)) {}
  Value(std::string_view text) : variant_(std::string(text)) {}
  Value(std::string text) : variant_(std::move(text)) {}
  Value(Data data) : variant_(std::move(data)) {}
  Value(Array array) : variant_(std::move(array)) {}
  Value(Dictionary dictionary) : variant_(std::move(dictionary)) {}

  [[nodiscard]] bool isNull() const { return std::holds_alternative<std::nullptr_t>(variant_); }

  /// The value as this type, or nullptr when it is of another.
  template <class T>
  [[nodiscard]] const T* get() const {
    return std::get_if<T>(&variant_);
  }
  template <class T>
  [[nodiscard]] T* get() {
    return std::get_if<T>(&variant_);
  }

  /// The dictionary's entry, or nullptr when there is none or this is not a dictionary.
  [[nodiscard]] const Value* find(std::string_view key) const {
    const auto* dictionary = get<Dictionary>();
    if (dictionary == nullptr) return nullptr;
    const auto entry = dictionary->find(key);
    return entry == dictionary->end() ? nullptr : &entry->second;
  }

  [[nodiscard]] const Variant& variant() const { return variant_; }

  friend bool operator==(const Value&, const Value&) = default;

 private:
  Variant variant_;
};

}  // namespace quorvantis::json
