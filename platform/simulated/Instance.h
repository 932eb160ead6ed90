// The objects behind the handles on the simulated device: the root of their classes, and how a handle's
// operation finds its object. Threads: the counts may be changed from any thread; each class documents the
// rest.
#pragma once

#include <atomic>
#include <cstdint>
#include <string>

#include "platform/Object.h"

namespace quorvantis::platform::simulated {

/// The classes that operations tell apart when they get an object; all others are `other`.
enum class Kind : std::uint8_t { string, number, data, array, dictionary, null, other };

class Instance {
 public:
  explicit Instance(Kind kind = Kind::other) : kind_(kind) {}
  virtual ~Instance() = default;
  Instance(const Instance&) = delete;
  Instance& operator=(const Instance&) = delete;

  [[nodiscard]] Kind kind() const { return kind_; }

  [[nodiscard]] virtual bool isEqual(const Instance& other) const { return this == &other; }
  [[nodiscard]] virtual std::string description() const { return "<object>"; }
  [[nodiscard]] virtual bool respondsToSelector(Selector /*selector*/) const { return false; }
  virtual void performSelector(Selector selector, const Object& /*withObject*/) {
    doesNotRecognizeSelector(selector);
  }

  void retain() noexcept { count_.fetch_add(1, std::memory_order_relaxed); }
  void release() noexcept {
    // A value has no weak references: with a single owner the count need not be synchronised.
    const bool hasOneOwner = kind_ != Kind::other && count_.load(std::memory_order_acquire) == 1;
    if (hasOneOwner || count_.fetch_sub(1, std::memory_order_acq_rel) == 1) destroy();
  }
  /// Retains unless the last count is already gone.
  [[nodiscard]] bool tryRetain() noexcept {
    std::uint32_t count = count_.load(std::memory_order_relaxed);
    while (count != 0) {
      if (count_.compare_exchange_weak(count, count + 1, std::memory_order_acq_rel)) return true;
    }
    return false;
  }

 protected:
  virtual void destroy() noexcept { delete this; }

 private:
  std::atomic<std::uint32_t> count_{1};
  Kind kind_;
};

/// The object behind a handle; nullptr for nil.
inline Instance* instanceOf(const Object& object) {
  return static_cast<Instance*>(object.get());
}

/// A new object, as a handle of a class.
template <class Handle, class T, class... Arguments>
Handle makeInstance(Arguments&&... arguments) {
  return Object::adopt(new T(std::forward<Arguments>(arguments)...)).template as<Handle>();
}

/// The object as one of the class T, which has `static constexpr Kind classKind`; nullptr when it is nil or
/// of another class.
template <class T>
T* instanceAs(const Object& object) {
  Instance* instance = instanceOf(object);
  return instance != nullptr && instance->kind() == T::classKind ? static_cast<T*>(instance) : nullptr;
}

/// The receiver of a message that only objects of the class T understand. Nullptr for nil; raises for any
/// other.
template <class T>
T* receiver(const Object& object, Selector selector) {
  if (!object) return nullptr;
  T* instance = instanceAs<T>(object);
  if (instance == nullptr) doesNotRecognizeSelector(selector);
  return instance;
}

/// The receiver behind a handle that never holds an object of another class. Nullptr for nil.
template <class T>
T* known(const Object& object) {
  return static_cast<T*>(instanceOf(object));
}

}  // namespace quorvantis::platform::simulated
