// The host's callback object, as the library holds it: any class that has some of the five callbacks, without
// a base class, neither retained nor copied. The host keeps it alive as long as it is set.
//
// Which callbacks a class has is found when it is compiled; each send asks first, at run time, whether the
// object responds. A class that wants a say in that has a member `bool
// respondsToSelector(platform::Selector)`.
//
// Threads: callbacks come on the thread of the operation that sends them, with no lock held.
#pragma once

#include <type_traits>

#include "platform/NSDictionary.h"

namespace quorvantis {

/// Each callback by what the platform calls it, its member's name and its argument. The argument may be nil
/// where the callback's own comment says so.
namespace callbacks {

/// The library has the device token and is about to register it with the push server. Nil when the platform
/// gave empty data (system version 13.0 or newer).
struct OnGetToken {
  using Argument = platform::NSString;
  static constexpr platform::Selector selector{"onGetToken:"};
  struct Name {
    int onGetToken;
  };
  template <class T>
  static auto member() -> decltype(&T::onGetToken);
  template <class T>
  static auto send(T& host, const Argument& token) -> decltype(host.onGetToken(token), void()) {
    host.onGetToken(token);
  }
};

/// A remote notification was handled: an immutable dictionary that tells of it.
struct OnReceiveNotification {
  using Argument = platform::NSDictionary;
  static constexpr platform::Selector selector{"onReceiveNotification:"};
  struct Name {
    int onReceiveNotification;
  };
  template <class T>
  static auto member() -> decltype(&T::onReceiveNotification);
  template <class T>
  static auto send(T& host, const Argument& report) -> decltype(host.onReceiveNotification(report), void()) {
    host.onReceiveNotification(report);
  }
};

/// The push server registered the token: its answer's "token", of whatever type, nil when it had none.
struct OnRegisterToken {
  using Argument = platform::Object;
  static constexpr platform::Selector selector{"onRegisterToken:"};
  struct Name {
    int onRegisterToken;
  };
  template <class T>
  static auto member() -> decltype(&T::onRegisterToken);
  template <class T>
  static auto send(T& host, const Argument& token) -> decltype(host.onRegisterToken(token), void()) {
    host.onRegisterToken(token);
  }
};

/// The push server changed the token: as OnRegisterToken.
struct OnUpdateToken {
  using Argument = platform::Object;
  static constexpr platform::Selector selector{"onUpdateToken:"};
  struct Name {
    int onUpdateToken;
  };
  template <class T>
  static auto member() -> decltype(&T::onUpdateToken);
  template <class T>
  static auto send(T& host, const Argument& token) -> decltype(host.onUpdateToken(token), void()) {
    host.onUpdateToken(token);
  }
};

/// To the host: a fixed text, a precondition of the library failed. To the facade: why a request failed, of
/// whatever type the server's answer gave, or nil.
struct OnError {
  using Argument = platform::Object;
  static constexpr platform::Selector selector{"onError:"};
  struct Name {
    int onError;
  };
  template <class T>
  static auto member() -> decltype(&T::onError);
  template <class T>
  static auto send(T& host, const Argument& error) -> decltype(host.onError(error), void()) {
    host.onError(error);
  }
};

/// The class has a callback that can be called with its argument.
template <class Callback, class T>
concept Has = requires(T& host, const typename Callback::Argument& argument) {
  Callback::send(host, argument);
};

template <class Callback, class T>
struct WithName : T, Callback::Name {};

/// The class has a member of the callback's name, of whatever kind: with a second one beside it the name is
/// ambiguous.
template <class Callback, class T>
concept Names = (std::is_final_v<T> && requires { Callback::template member<T>(); }) ||
                (!std::is_final_v<T> && !requires { Callback::template member<WithName<Callback, T>>(); });

template <class Callback, class T>
inline constexpr bool isWellFormed = !Names<Callback, T> || Has<Callback, T>;

template <class T>
inline constexpr bool hasAny = Has<OnGetToken, T> || Has<OnReceiveNotification, T> ||
                               Has<OnRegisterToken, T> || Has<OnUpdateToken, T> || Has<OnError, T>;

template <class T>
inline constexpr bool areWellFormed = isWellFormed<OnGetToken, T>&& isWellFormed<OnReceiveNotification, T>&&
    isWellFormed<OnRegisterToken, T>&& isWellFormed<OnUpdateToken, T>&& isWellFormed<OnError, T>;

/// Whether the class has the callback of that selector.
template <class T>
bool implements(platform::Selector selector) {
  return (Has<OnGetToken, T> && selector == OnGetToken::selector) ||
         (Has<OnReceiveNotification, T> && selector == OnReceiveNotification::selector) ||
         (Has<OnRegisterToken, T> && selector == OnRegisterToken::selector) ||
         (Has<OnUpdateToken, T> && selector == OnUpdateToken::selector) ||
         (Has<OnError, T> && selector == OnError::selector);
}

template <class Callback, class T>
bool sendIf(T& host, platform::Selector selector, const platform::Object& argument) {
  if constexpr (Has<Callback, T>) {
    if (selector == Callback::selector) {
      Callback::send(host, argument.as<typename Callback::Argument>());
      return true;
    }
  }
  return false;
}

/// Calls the member of that selector. Raises if the class has none.
template <class T>
void perform(T& host, platform::Selector selector, const platform::Object& argument) {
  const bool sent = sendIf<OnGetToken>(host, selector, argument) ||
                    sendIf<OnReceiveNotification>(host, selector, argument) ||
                    sendIf<OnRegisterToken>(host, selector, argument) ||
                    sendIf<OnUpdateToken>(host, selector, argument) ||
                    sendIf<OnError>(host, selector, argument);
  if (!sent) platform::doesNotRecognizeSelector(selector);
}

}  // namespace callbacks

class PushDelegate {
 public:
  /// How messages reach an object; one static table for each class, or one for all objects of another
  /// language.
  struct Table {
    bool (*respondsToSelector)(void* object, platform::Selector selector);
    void (*performSelector)(void* object, platform::Selector selector, const platform::Object& argument);
  };

  /// No delegate: answers no, and a send does nothing.
  PushDelegate() = default;
  PushDelegate(std::nullptr_t) {}  // NOLINT(google-explicit-constructor)

  /// `host` is to outlive its time as a delegate.
  template <class T>
  requires std::is_class_v<T> &&
      (!std::is_same_v<T, PushDelegate>)PushDelegate(T& host)  // NOLINT(google-explicit-constructor)
      : object_(&host), table_(&tableOf<T>) {
    static_assert(callbacks::areWellFormed<T>,
                  "a callback of this delegate can't be called with the argument that the library sends");
    static_assert(
        callbacks::hasAny<T>,
        "this class has none of the five callbacks; PushDelegate::withoutCallbacks() says that on purpose");
  }

  /// An object of another language, by its address.
  PushDelegate(void* object, const Table& table) : object_(object), table_(&table) {}

  /// A delegate that is there and answers no to everything.
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

  /// Raises if the object does not respond. Without a delegate it does nothing.
  void performSelector(platform::Selector selector, const platform::Object& argument) const {
    if (table_ != nullptr) table_->performSelector(object_, selector, argument);
  }

  /// The object's address; nullptr without a delegate.
  [[nodiscard]] void* object() const { return object_; }

 private:
  template <class T>
  static bool responds(void* object, platform::Selector selector) {
    if constexpr (requires(T & host) { bool(host.respondsToSelector(selector)); }) {
      return static_cast<T*>(object)->respondsToSelector(selector);
    } else {
      return callbacks::implements<T>(selector);
    }
  }

  template <class T>
  static constexpr Table tableOf{
      &responds<T>, [](void* object, platform::Selector selector, const platform::Object& argument) {
        if (!responds<T>(object, selector)) platform::doesNotRecognizeSelector(selector);
        callbacks::perform(*static_cast<T*>(object), selector, argument);
      }};

  void* object_ = nullptr;
  const Table* table_ = nullptr;
};

/// The two steps of a guarded send: ask, then send. For every kind of delegate.
template <class Delegate>
void sendIfResponds(const Delegate& delegate, platform::Selector selector, const platform::Object& argument) {
  if (delegate.respondsToSelector(selector)) delegate.performSelector(selector, argument);
}

}  // namespace quorvantis
