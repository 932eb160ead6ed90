// The root of the classes that the library itself defines, seen from C++.
//
// Every such object has a platform object in front of it: that is what others hold, count, ask and send
// messages to, and it owns this one. On iOS the front is an object of an exported class, which makes this one
// along with itself and passes itself in; the simulated phone makes a front along with this object.
//
// Threads: counting may happen on any thread; the rest is said by the derived class.
#pragma once

#include "platform/Object.h"

namespace quorvantis::platform {

class QUORVANTIS_PUSH_API NSObject {
 public:
  NSObject(const NSObject&) = delete;
  NSObject& operator=(const NSObject&) = delete;

  /// "This object" for the platform and for other objects: the front, counted for the caller.
  [[nodiscard]] virtual Object self() const;

  /// What the front answers to respondsToSelector:, where it was made along. Any thread.
  [[nodiscard]] virtual bool respondsToSelector(Selector selector) const;

  /// What a message of one object does, where the front was made along. Raises when it is not understood.
  virtual void performSelector(Selector selector, const Object& withObject);

  /// The front's pointer, not counted.
  [[nodiscard]] void* front() const noexcept { return front_; }

 protected:
  /// `front`: the platform object that owns this one, not retained. Nil, on the simulated phone alone, makes
  /// one, whose first count is the maker's.
  explicit NSObject(void* front = nullptr);
  virtual ~NSObject();

  /// Lets go of the fields in their order, each of them nil from then on. Comes once, when the front's last
  /// count has gone and before destruction, while messages to this object still find it whole.
  virtual void emptyFields() {}

 private:
  friend struct FrontAccess;

  void* front_;
  bool ownsFront_;
};

/// A counted reference to an object of the library, never nil unless default-made or moved from.
template <class T>
class Ref {
 public:
  Ref() noexcept = default;
  /// Takes over one count that the caller owns.
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
  /// Hands the count over to the caller.
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
