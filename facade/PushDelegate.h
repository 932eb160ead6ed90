// The host's callback object, as the library holds it: any class that has some of the five callbacks, without
// a base class, neither retained nor copied. The host keeps it alive as long as it is set.
//
// Which callbacks a class has is determined at compile time; each send first asks, at run time, whether the
// object responds. A class can decide that itself with a member `bool
// respondsToSelector(platform::Selector)`.
//
// Threads: callbacks come on the thread of the operation that sends them, with no lock held.
#pragma once

#include <type_traits>

#include "platform/NSDictionary.h"
#include "registration/callbacks.h"

namespace quorvantis {

/// Each callback: its selector, its argument and its member's name. The argument may be nil where the
/// callback's comment says so.
namespace callbacks {

/// The library has the device token and is about to register it with the push server. Nil when the platform
/// gave empty data (system version 13.0 or newer).
struct OnGetToken {
  using Argument = platform::NSString;
  static constexpr platform::Selector selector = onGetToken;
  struct Name {
    int onGetToken;
  };
  static auto member(auto& host) -> decltype(&std::remove_reference_t<decltype(host)>::onGetToken);
  static auto send(auto& host, const Argument& token) -> decltype(host.onGetToken(token)) {
    return host.onGetToken(token);
  }
};

/// A remote notification was handled: an immutable dictionary that describes it.
struct OnReceiveNotification {
  using Argument = platform::NSDictionary;
  static constexpr platform::Selector selector = onReceiveNotification;
  struct Name {
    int onReceiveNotification;
  };
  static auto member(auto& host) -> decltype(&std::remove_reference_t<decltype(host)>::onReceiveNotification);
  static auto send(auto& host, const Argument& report) -> decltype(host.onReceiveNotification(report)) {
    return host.onReceiveNotification(report);
  }
};

/// The push server registered the token: its answer's "token", of whatever type, nil when it had none.
struct OnRegisterToken {
  using Argument = platform::Object;
  static constexpr platform::Selector selector = onRegisterToken;
  struct Name {
    int onRegisterToken;
  };
  static auto member(auto& host) -> decltype(&std::remove_reference_t<decltype(host)>::onRegisterToken);
  static auto send(auto& host, const Argument& token) -> decltype(host.onRegisterToken(token)) {
    return host.onRegisterToken(token);
  }
};

/// The push server changed the token: as OnRegisterToken.
struct OnUpdateToken {
  using Argument = platform::Object;
  static constexpr platform::Selector selector = onUpdateToken;
  struct Name {
    int onUpdateToken;
  };
  static auto member(auto& host) -> decltype(&std::remove_reference_t<decltype(host)>::onUpdateToken);
  static auto send(auto& host, const Argument& token) -> decltype(host.onUpdateToken(token)) {
    return host.onUpdateToken(token);
  }
};

/// For the host: a fixed string when a precondition of the library failed. For the facade: why a request
/// failed, of whatever type the server's answer had, or nil.
struct OnError {
  using Argument = platform::Object;
  static constexpr platform::Selector selector = onError;
  struct Name {
    int onError;
  };
  static auto member(auto& host) -> decltype(&std::remove_reference_t<decltype(host)>::onError);
  static auto send(auto& host, const Argument& error) -> decltype(host.onError(error)) {
    return host.onError(error);
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
concept Names = (std::is_final_v<T> && requires(T & host) { Callback::member(host); }) ||
                (!std::is_final_v<T> && !requires(WithName<Callback, T> & both) { Callback::member(both); });

template <class... Callbacks>
struct SetOf {
  template <class T>
  static constexpr bool hasAny = (Has<Callbacks, T> || ...);

  template <class T>
  static constexpr bool areWellFormed = ((!Names<Callbacks, T> || Has<Callbacks, T>)&&...);

  /// Whether the class has the callback of that selector.
  template <class T>
  static bool implements(platform::Selector selector) {
    return ((Has<Callbacks, T> && selector == Callbacks::selector) || ...);
  }

  /// Calls the member of that selector. Raises if the class has none.
  template <class T>
  static void perform(T& host, platform::Selector selector, const platform::Object& argument) {
    const bool sent = (sendIf<Callbacks>(host, selector, argument) || ...);
    if (!sent) platform::doesNotRecognizeSelector(selector);
  }

 private:
  template <class Callback, class T>
  static bool sendIf(T& host, platform::Selector selector, const platform::Object& argument) {
    if constexpr (Has<Callback, T>) {
      if (selector == Callback::selector) {
        Callback::send(host, argument.as<typename Callback::Argument>());
        return true;
      }
    }
    return false;
  }
};

using All = SetOf<OnGetToken, OnReceiveNotification, OnRegisterToken, OnUpdateToken, OnError>;

}  // namespace callbacks

class PushDelegate {
 public:
  /// How messages reach an object; one static table per class, or one for all objects of another
  /// language.
  struct Table {
    bool (*respondsToSelector)(void* object, platform::Selector selector);
    void (*performSelector)(void* object, platform::Selector selector, const platform::Object& argument);
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
      return callbacks::All::implements<T>(selector);
    }
  }

  template <class T>
  static constexpr Table tableOf{
      &responds<T>, [](void* object, platform::Selector selector, const platform::Object& argument) {
        if (!responds<T>(object, selector)) platform::doesNotRecognizeSelector(selector);
        callbacks::All::perform(*static_cast<T*>(object), selector, argument);
      }};

  void* object_ = nullptr;
  const Table* table_ = nullptr;
};

}  // namespace quorvantis
