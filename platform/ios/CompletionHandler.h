// A block that the system passed in, as a counted object. Main thread.
#pragma once

#import <Foundation/Foundation.h>

__attribute__((visibility("hidden")))
@interface QuorvantisPushCompletionHandler : NSObject {
 @private
  void* _block;
}

/// Copies the block. Nil gives an object without one.
- (instancetype)initWithBlock:(id)block;

/// The block, still owned by this object.
- (id)block;

@end

namespace quorvantis::platform {

class Object;

namespace ios {

/// A completion handler as the core takes it: any block, or nil.
Object handlerFrom(id block);

}  // namespace ios
}  // namespace quorvantis::platform
