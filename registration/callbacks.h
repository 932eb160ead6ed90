// What the library tells its delegates, by the platform's names of the messages, and how a guarded one is
// sent.
#pragma once

#include "platform/Object.h"

namespace quorvantis::callbacks {

inline constexpr platform::Selector onGetToken{"onGetToken:"};
inline constexpr platform::Selector onReceiveNotification{"onReceiveNotification:"};
inline constexpr platform::Selector onRegisterToken{"onRegisterToken:"};
inline constexpr platform::Selector onUpdateToken{"onUpdateToken:"};
inline constexpr platform::Selector onError{"onError:"};

/// The two steps of a guarded send, to one object: ask, then send. `delegate` is of any kind; it is a copy,
/// so that an object which replaces itself while it is asked is the one that is told.
template <class Delegate>
void sendIfResponds(Delegate delegate, platform::Selector selector, const platform::Object& argument) {
  if (delegate.respondsToSelector(selector)) delegate.performSelector(selector, argument);
}

}  // namespace quorvantis::callbacks
