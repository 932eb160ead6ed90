// Converts the seam's handles and names to Objective-C objects, and back. Counts are handled manually only
// here and in retainObject() and releaseObject(). Any thread.
#pragma once

#import <Foundation/Foundation.h>
#include <objc/message.h>

#include "platform/Class.h"
#include "platform/NSString.h"

namespace quorvantis::platform::ios {

/// The object behind a handle, which keeps its ownership.
inline id objectOf(const Object& handle) { return static_cast<id>(handle.get()); }

/// A handle with its own count.
template <class Handle = Object>
Handle retained(id object) {
  return Object::retain(object).as<Handle>();
}

/// A handle that takes ownership of the count that alloc, new, copy or a Create function returned.
template <class Handle = Object>
Handle adopted(id object) {
  return Object::adopt(object).as<Handle>();
}

/// The object as a method returns it: it outlives the handle until the pool is drained.
inline id autoreleased(const Object& handle) { return [[objectOf(handle) retain] autorelease]; }

/// The runtime's own form of a message's name.
inline SEL selectorOf(Selector selector) { return sel_registerName(selector.name.data()); }

/// Sends a message with one argument and without a result: the message itself, since a proxy may lack
/// performSelector:withObject:, and a class override it. Nil gets nothing.
inline void send(id object, Selector selector, const Object& argument) {
  reinterpret_cast<void (*)(id, SEL, id)> (&objc_msgSend)(object, selectorOf(selector), objectOf(argument));
}

/// The library's own class of that name, of which the process may have several. Defined with the classes,
/// which nothing here knows.
::Class runtimeClass(Class aClass);

/// A string from the code's bytes, autoreleased.
inline ::NSString* textFrom(std::string_view text) {
  return [[[::NSString alloc] initWithBytes:text.data() length:text.size()
                                   encoding:NSUTF8StringEncoding] autorelease];
}

}  // namespace quorvantis::platform::ios
