// From the seam's handles and names to Objective-C objects, and back. Here alone, with retainObject()
// and releaseObject(), are counts taken and given by hand. Any thread.
#pragma once

#import <Foundation/Foundation.h>

#include "platform/Class.h"
#include "platform/NSString.h"

namespace quorvantis::platform::ios {

/// The object behind a handle, which goes on owning it.
inline id objectOf(const Object& handle) { return static_cast<id>(handle.get()); }

/// A handle with a count of its own.
template <class Handle = Object>
Handle retained(id object) {
  return Object::retain(object).as<Handle>();
}

/// A handle that takes over the count that alloc, new, copy or a Create function gave.
template <class Handle = Object>
Handle adopted(id object) {
  return Object::adopt(object).as<Handle>();
}

/// The object as a method gives it back: it outlives the handle until the pool is drained.
inline id autoreleased(const Object& handle) { return [[objectOf(handle) retain] autorelease]; }

/// The runtime's own form of a message's name.
inline SEL selectorOf(Selector selector) { return sel_registerName(selector.name.data()); }

/// The library's own class of that name, of which the process may have several. Defined beside the classes,
/// which nothing here knows.
::Class runtimeClass(Class aClass);

/// A text that the code holds as bytes, autoreleased.
inline ::NSString* textFrom(std::string_view text) {
  return [[[::NSString alloc] initWithBytes:text.data() length:text.size()
                                   encoding:NSUTF8StringEncoding] autorelease];
}

}  // namespace quorvantis::platform::ios
