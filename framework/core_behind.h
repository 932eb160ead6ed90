// The core object behind an exported one. Any thread.
#pragma once

#import <Foundation/Foundation.h>

namespace quorvantis::framework {

/// The core behind an exported object. Raises before the object's `init` and while it ends.
template <class Core>
Core& coreBehind(void* core) {
  if (core == nullptr) {
    @throw [NSException exceptionWithName:NSInternalInconsistencyException
                                   reason:@"a message was sent before -init, or to an object that is ending"
                                 userInfo:nil];
  }
  return *static_cast<Core*>(core);
}

}  // namespace quorvantis::framework
