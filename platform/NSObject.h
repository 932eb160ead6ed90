// The root of the library's own classes, seen from C++.
//
// Every such object has a platform object as its front: others hold, count and send messages to the front,
// and it owns this object. On iOS the front is an object of an exported class, which creates this one along
// with itself and passes itself in; the simulated phone creates a front along with this object.
//
// Threads: counting may happen on any thread; derived classes document the rest.
#pragma once

#include "platform/Object.h"

namespace quorvantis::platform {

class QUORVANTIS_PUSH_API NSObject {
 public:
  NSObject(const NSObject&) = delete;
  NSObject& operator=(const NSObject&) = delete;

  /// "This object" for the platform and for other objects: the front, counted for the caller.
  [[nodiscard]] virtual Object self() const;

  /// The front's answer to respondsToSelector:, on the simulated phone. Any thread.
  [[nodiscard]] virtual bool respondsToSelector(Selector selector) const;

  /// Handles a message with one argument, on the simulated phone. Raises when it is not understood.
  virtual void performSelector(Selector selector, const Object& withObject);

  /// The front's pointer, not counted.
  [[nodiscard]] void* front() const noexcept { return front_; }

 protected:
  /// `front`: the platform object that owns this one, not retained. Nil, only on the simulated phone, creates
  /// one, whose first count is the caller's.
  explicit NSObject(void* front = nullptr);
  virtual ~NSObject();

  /// Releases the fields in order and sets each to nil. Called once, when the front's last count is gone and
  /// before destruction, while messages to this object still find it intact.
  virtual void emptyFields() {}

 private:
  friend struct FrontAccess;

  void* front_;
  bool ownsFront_;
};

/// A counted reference to an object of the library, never nil unless default-constructed or moved from.
template <class T>
class Ref {
 public:
  Ref() noexcept = default;
  /// Takes ownership of one count.
  static Ref adopt(T* object) noexcept {
    Ref ref;
    ref.object_ = object;
    return ref;
  }
  static Ref retain(T* object) noexcept {
    if (object != nullptr) retainObject(object->front());
    return adopt(object);
  }
  Ref(const Ref& other) noexcept : Ref(retain(other.object_)) {}
  Ref(Ref&& other) noexcept : object_(std::exchange(other.object_, nullptr)) {}
  template <class Derived>
  Ref(Ref<Derived>&& other) noexcept : object_(other.detach()) {}  // NOLINT(google-explicit-constructor)
  Ref& operator=(Ref other) noexcept {
    std::swap(object_, other.object_);
    return *this;
  }
  ~Ref() {
    if (object_ != nullptr) releaseObject(object_->front());
  }

  explicit operator bool() const noexcept { return object_ != nullptr; }
  T* operator->() const noexcept { return object_; }
  T& operator*() const noexcept { return *object_; }
  [[nodiscard]] T* get() const noexcept { return object_; }
  /// Transfers the count to the caller.
  [[nodiscard]] T* detach() noexcept { return std::exchange(object_, nullptr); }

 private:
  T* object_ = nullptr;
};

/// Allocates an object of the library and sends it `init`, the platform's two steps: in `init` the overrides
/// of the most derived class are in force.
template <class T, class... Arguments>
Ref<T> make(Arguments&&... arguments) {
  auto object = Ref<T>::adopt(new T(std::forward<Arguments>(arguments)...));
  object->init();
  return object;
}

}  // namespace quorvantis::platform
