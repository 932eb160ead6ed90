// A counted reference to one of the platform's objects, of any class; it may be nil.
//
// Handles of a class (NSString, …) derive from it, add operations and no state. Turning an untyped handle
// into a typed one checks nothing: as with the platform's `id`, an object that does not understand a message
// raises when it gets it. A raise is the platform's own exception; code that it passes through keeps its
// invariants and does not catch it. A message to nil does nothing and returns nil, 0 or false.
//
// Threads: the counts may be changed from any thread; one handle is used by one thread at a time.
#pragma once

#include <cstddef>
#include <utility>

#include "platform/Selector.h"
#include "platform/export.h"

namespace quorvantis::platform {

/// Adds one to the object's count. Nil is allowed. Returns its argument.
QUORVANTIS_PUSH_API void* retainObject(void* object) noexcept;

/// Removes one from the object's count; destroys the object when none is left. Nil is allowed.
QUORVANTIS_PUSH_API void releaseObject(void* object) noexcept;

class QUORVANTIS_PUSH_API Object {
 public:
  Object() noexcept = default;
  Object(std::nullptr_t) noexcept {}  // NOLINT(google-explicit-constructor): nil stands for any object
  Object(const Object& other) noexcept : pointer_(retainObject(other.pointer_)) {}
  Object(Object&& other) noexcept : pointer_(std::exchange(other.pointer_, nullptr)) {}
  ~Object() { releaseObject(pointer_); }

  // The old object is released last: code that its destruction calls finds the new one in place.
  Object& operator=(const Object& other) noexcept {
    Object(other).swap(*this);
    return *this;
  }
  Object& operator=(Object&& other) noexcept {
    Object(std::move(other)).swap(*this);
    return *this;
  }

  /// Takes ownership of one count.
  static Object adopt(void* object) noexcept {
    Object handle;
    handle.pointer_ = object;
    return handle;
  }
  /// Adds a count.
  static Object retain(void* object) noexcept { return adopt(retainObject(object)); }

  explicit operator bool() const noexcept { return pointer_ != nullptr; }

  /// The platform's pointer, still owned by this handle.
  [[nodiscard]] void* get() const noexcept { return pointer_; }

  /// Identity: the same object, or both nil.
  [[nodiscard]] bool isSame(const Object& other) const noexcept { return pointer_ == other.pointer_; }

  /// The same object seen as another class. Never checks.
  template <class T>
  [[nodiscard]] T as() const& {
    return Object(*this).as<T>();
  }
  template <class T>
  [[nodiscard]] T as() && {
    T typed;
    static_cast<Object&>(typed).swap(*this);
    return typed;
  }

  /// Equality (isEqual:). Nil equals nothing, nil included.
  [[nodiscard]] bool isEqual(const Object& other) const;

  /// Asks the object on every call. Nil answers no.
  [[nodiscard]] bool respondsToSelector(Selector selector) const;

  /// Sends a message with one argument, the message itself. Raises if the object does not understand it.
  void send(Selector selector, const Object& argument) const;

  void swap(Object& other) noexcept { std::swap(pointer_, other.pointer_); }

 private:
  void* pointer_ = nullptr;
};

/// Raises what the platform raises for a message that its receiver does not understand.
[[noreturn]] QUORVANTIS_PUSH_API void doesNotRecognizeSelector(Selector selector);

}  // namespace quorvantis::platform
