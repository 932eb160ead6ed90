// Values as objects: strings, numbers, data, arrays, dictionaries and null, and their conversion from and to
// the device's plain values. Immutable except for mutable dictionaries; usable from any thread.
#pragma once

#include <atomic>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <variant>
#include <vector>

#include "json/value.h"
#include "platform/NSString.h"
#include "platform/simulated/Instance.h"

namespace quorvantis::platform::simulated {

/// The characters directly follow the object in the same allocation.
class StringInstance final : public Instance {
 public:
  static constexpr Kind classKind = Kind::string;
  static StringInstance* make(std::string_view characters);
  static void operator delete(void* memory) { ::operator delete(memory); }

  [[nodiscard]] bool isEqual(const Instance& other) const override;
  [[nodiscard]] std::string description() const override { return std::string(text); }

  const std::string_view text;

 private:
  explicit StringInstance(std::string_view characters);
  struct Behind {
    std::size_t bytes;
  };
  static void* operator new(std::size_t size, Behind behind) { return ::operator new(size + behind.bytes); }
  static void operator delete(void* memory, Behind /*behind*/) { ::operator delete(memory); }
};

class NumberInstance final : public Instance {
 public:
  static constexpr Kind classKind = Kind::number;
  using Number = std::variant<bool, std::int64_t, std::uint64_t, double>;
  explicit NumberInstance(Number itsNumber) : Instance(classKind), number(itsNumber) {}

  [[nodiscard]] bool isEqual(const Instance& other) const override;
  [[nodiscard]] std::string description() const override;

  const Number number;
};

/// Its bytes have an allocation of exactly their size, so that sanitizers detect reads beyond them.
class DataInstance final : public Instance {
  const std::vector<char> store_;

 public:
  static constexpr Kind classKind = Kind::data;
  explicit DataInstance(std::string_view itsBytes)
      : Instance(classKind), store_(itsBytes.begin(), itsBytes.end()), bytes(store_.data(), store_.size()) {}

  [[nodiscard]] bool isEqual(const Instance& other) const override;
  [[nodiscard]] std::string description() const override;

  const std::string_view bytes;
};

class ArrayInstance final : public Instance {
 public:
  static constexpr Kind classKind = Kind::array;
  explicit ArrayInstance(std::vector<Object> objects) : Instance(classKind), elements(std::move(objects)) {}

  [[nodiscard]] std::string description() const override;

  const std::vector<Object> elements;
};

/// Entries in the order of their keys, which are strings.
class DictionaryInstance final : public Instance {
 public:
  static constexpr Kind classKind = Kind::dictionary;
  using Entry = std::pair<NSString, Object>;
  using Entries = std::vector<Entry>;
  /// An empty one, mutable.
  DictionaryInstance() : DictionaryInstance(std::make_shared<Entries>(), true) {}
  /// An immutable one.
  explicit DictionaryInstance(Entries sorted)
      : DictionaryInstance(std::make_shared<Entries>(std::move(sorted)), false) {}

  [[nodiscard]] std::string description() const override;

  [[nodiscard]] const Entries& entries() const { return *entries_; }
  [[nodiscard]] const Object* find(std::string_view key) const;
  [[nodiscard]] bool isMutable() const { return isMutable_; }
  /// Only for a mutable one.
  void set(const NSString& key, Object object);
  /// An immutable copy, which shares the entries until this one is changed; the same object if this one is
  /// immutable.
  [[nodiscard]] Object copy();

 private:
  DictionaryInstance(std::shared_ptr<Entries> entries, bool isMutable)
      : Instance(classKind), entries_(std::move(entries)), isMutable_(isMutable) {}
  /// The position of the key, or where to insert it.
  [[nodiscard]] std::size_t placeOf(std::string_view key) const;

  std::shared_ptr<Entries> entries_;
  const bool isMutable_;
  bool lent_ = false;
  // Keys are mostly read and set in their order.
  mutable std::atomic<std::size_t> expected_{0};
};

class NullInstance final : public Instance {
 public:
  static constexpr Kind classKind = Kind::null;
  NullInstance() : Instance(classKind) {}

  [[nodiscard]] bool isEqual(const Instance& other) const override { return other.kind() == classKind; }
  [[nodiscard]] std::string description() const override { return "<null>"; }
};

/// A new object; JSON's null becomes the null object.
Object objectFrom(const json::Value& value);

/// The value that an object is; null for nil, nothing for an object that is not a value.
std::optional<json::Value> valueFrom(const Object& object);

/// An object's description; nothing for nil.
std::optional<std::string> textOf(const Object& object);

/// A string, or nil.
NSString stringFrom(const std::optional<std::string>& text);

}  // namespace quorvantis::platform::simulated
