// How the callbacks of a host's class are found at compile time, and called by their selectors. Hosts need
// not read this: facade/PushDelegate.h says what they are.
#pragma once

#include <type_traits>

#include "platform/NSDictionary.h"
#include "registration/callbacks.h"

namespace quorvantis::callbacks {

// NOLINTBEGIN(bugprone-macro-parentheses): the arguments are names
// `member` exists where a class has a member of the name, `send` where the member can be called.
#define QUORVANTIS_PUSH_CALLBACK(Callback, name, ItsArgument)                                   \
  struct Callback {                                                                             \
    using Argument = ItsArgument;                                                               \
    static constexpr platform::Selector selector = callbacks::name;                             \
    struct Name {                                                                               \
      int name;                                                                                 \
    };                                                                                          \
    static auto member(auto& host) -> decltype(&std::remove_reference_t<decltype(host)>::name); \
    static auto send(auto& host, const Argument& argument) -> decltype(host.name(argument)) {   \
      return host.name(argument);                                                               \
    }                                                                                           \
  }

QUORVANTIS_PUSH_CALLBACK(OnGetToken, onGetToken, platform::NSString);
QUORVANTIS_PUSH_CALLBACK(OnReceiveNotification, onReceiveNotification, platform::NSDictionary);
QUORVANTIS_PUSH_CALLBACK(OnRegisterToken, onRegisterToken, platform::Object);
QUORVANTIS_PUSH_CALLBACK(OnUpdateToken, onUpdateToken, platform::Object);
QUORVANTIS_PUSH_CALLBACK(OnError, onError, platform::Object);

#undef QUORVANTIS_PUSH_CALLBACK
// NOLINTEND(bugprone-macro-parentheses)

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
  static void send(T& host, platform::Selector selector, const platform::Object& argument) {
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

}  // namespace quorvantis::callbacks
