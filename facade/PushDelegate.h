// The host's callback object, as the library holds it: any class that has some of the five callbacks, without
// a base class, neither retained nor copied. The host keeps it alive as long as it is set.
//
//   void onGetToken(const platform::NSString& token);
//     The library has the device token and is about to register it with the push server. Nil when the
//     platform gave empty data (system version 13.0 or newer).
//   void onReceiveNotification(const platform::NSDictionary& report);
//     A remote notification was handled: an immutable dictionary that describes it.
//   void onRegisterToken(const platform::Object& token);
//     The push server registered the token: its answer's "token", of whatever type, nil when it had none.
//   void onUpdateToken(const platform::Object& token);
//     The push server changed the token: the same.
//   void onError(const platform::Object& error);
//     A precondition of the library failed: a fixed string.
//
// Which of them a class has is determined at compile time. A class may also decide by itself which of them it
// responds to, with a member `bool respondsToSelector(platform::Selector)`: each send first asks it, once.
// Only the onError() of a system that is too old is sent without asking.
//
// Threads: callbacks come on the thread of the operation that sends them, with no lock held.
#pragma once

#include "facade/host_callbacks.h"

namespace quorvantis {

class PushDelegate {
 public:
  /// How messages reach an object; one static table per class, or one for all objects of another
  /// language.
  struct Table {
    bool (*respondsToSelector)(void* object, platform::Selector selector);
    void (*send)(void* object, platform::Selector selector, const platform::Object& argument);
  };

  /// No delegate: answers no, and a send does nothing.
  PushDelegate() = default;
  PushDelegate(std::nullptr_t) {}  // NOLINT(google-explicit-constructor)

  /// `host` must outlive its use as a delegate.
  template <class T>
  requires std::is_class_v<T> &&
      (!std::is_same_v<T, PushDelegate>)PushDelegate(T& host)  // NOLINT(google-explicit-constructor)
      : object_(&host), table_(&tableOf<T>) {
    static_assert(callbacks::All::areWellFormed<T>,
                  "a callback of this delegate can't be called with the argument that the library sends");
    static_assert(
        callbacks::All::hasAny<T>,
        "this class has none of the five callbacks; PushDelegate::withoutCallbacks() says that on purpose");
  }

  /// An object of another language, by its address.
  PushDelegate(void* object, const Table& table) : object_(object), table_(&table) {}

  /// A delegate that responds to nothing.
  static PushDelegate withoutCallbacks() {
    static constexpr Table table{[](void*, platform::Selector) { return false; },
                                 [](void*, platform::Selector selector, const platform::Object&) {
                                   platform::doesNotRecognizeSelector(selector);
                                 }};
    return {nullptr, table};
  }

  [[nodiscard]] bool respondsToSelector(platform::Selector selector) const {
    return table_ != nullptr && table_->respondsToSelector(object_, selector);
  }

  /// Sends the callback, without asking. Raises if the object has no such callback. Without a delegate it
  /// does nothing.
  void send(platform::Selector selector, const platform::Object& argument) const {
    if (table_ != nullptr) table_->send(object_, selector, argument);
  }

  /// The object's address; nullptr without a delegate.
  [[nodiscard]] void* object() const { return object_; }

 private:
  template <class T>
  static bool responds(void* object, platform::Selector selector) {
    if constexpr (requires(T & host) { bool(host.respondsToSelector(selector)); }) {
      return static_cast<T*>(object)->respondsToSelector(selector);
    } else {
      return callbacks::All::implements<T>(selector);
    }
  }

  template <class T>
  static constexpr Table tableOf{
      &responds<T>, [](void* object, platform::Selector selector, const platform::Object& argument) {
        callbacks::All::send(*static_cast<T*>(object), selector, argument);
      }};

  void* object_ = nullptr;
  const Table* table_ = nullptr;
};

}  // namespace quorvantis
