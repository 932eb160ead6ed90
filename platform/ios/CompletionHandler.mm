#import "platform/ios/CompletionHandler.h"

#include <Block.h>

#include "platform/ios/bridge.h"

@implementation QuorvantisPushCompletionHandler

- (instancetype)initWithBlock:(id)block {
  self = [super init];
  if (self != nil && block != nil) _block = Block_copy(static_cast<void*>(block));
  return self;
}

- (void)dealloc {
  if (_block != nullptr) Block_release(_block);
  [super dealloc];
}

- (id)block {
  return static_cast<id>(_block);
}

@end

namespace quorvantis::platform::ios {

Object handlerFrom(id block) {
  if (block == nil) return nullptr;
  return adopted([[QuorvantisPushCompletionHandler alloc] initWithBlock:block]);
}

}  // namespace quorvantis::platform::ios
