// The selectors of the library's messages to its delegates, and the guarded send.
#pragma once

#include "platform/Object.h"

namespace quorvantis::callbacks {

inline constexpr platform::Selector onGetToken{"onGetToken:"};
inline constexpr platform::Selector onReceiveNotification{"onReceiveNotification:"};
inline constexpr platform::Selector onRegisterToken{"onRegisterToken:"};
inline constexpr platform::Selector onUpdateToken{"onUpdateToken:"};
inline constexpr platform::Selector onError{"onError:"};

/// A guarded send: asks the object once whether it responds, then sends. `delegate` is of any kind; it is a
/// copy, so that a delegate which replaces itself while it is asked still gets the message.
template <class Delegate>
void sendIfResponds(Delegate delegate, platform::Selector selector, const platform::Object& argument) {
  if (delegate.respondsToSelector(selector)) delegate.send(selector, argument);
}

}  // namespace quorvantis::callbacks
