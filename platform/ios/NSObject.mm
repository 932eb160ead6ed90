#include "platform/NSObject.h"

#include "platform/QuorvantisConnexion.h"
#include "platform/QuorvantisRegisterLib.h"
#include "platform/ios/bridge.h"

/// Stands in front of an object of the library that no Objective-C class stands for: owns it, and passes
/// messages on.
__attribute__((visibility("hidden")))
@interface QuorvantisPushFront : NSObject {
 @private
  void* _core;
}
@end

namespace quorvantis::platform {

struct FrontAccess {
  static void letGo(NSObject* core) {
    core->ownsFront_ = false;
    delete core;
  }
};

}  // namespace quorvantis::platform

using quorvantis::platform::Selector;

@implementation QuorvantisPushFront

- (instancetype)initWithCore:(quorvantis::platform::NSObject*)core {
  self = [super init];
  _core = core;
  return self;
}

- (void)forgetCore {
  _core = nullptr;
}

- (void)dealloc {
  if (_core != nullptr) quorvantis::platform::FrontAccess::letGo([self core]);
  [super dealloc];
}

- (quorvantis::platform::NSObject*)core {
  return static_cast<quorvantis::platform::NSObject*>(_core);
}

- (BOOL)respondsToSelector:(SEL)selector {
  return [super respondsToSelector:selector] || [self core]->respondsToSelector({sel_getName(selector)});
}

- (id)performSelector:(SEL)selector withObject:(id)object {
  if ([super respondsToSelector:selector]) return [super performSelector:selector withObject:object];
  [self core]->performSelector({sel_getName(selector)}, quorvantis::platform::ios::retained(object));
  return nil;
}

- (void)downloadFinished:(NSString*)connexionValue {
  auto* delegate = dynamic_cast<quorvantis::platform::QuorvantisConnexionDelegate*>([self core]);
  if (delegate == nullptr) return [self doesNotRecognizeSelector:_cmd];
  using Text = quorvantis::platform::NSString;
  delegate->downloadFinished(quorvantis::platform::ios::retained<Text>(connexionValue));
}

- (void)registerFinish {
  auto* delegate = dynamic_cast<quorvantis::platform::QuorvantisRegisterLibDelegate*>([self core]);
  if (delegate == nullptr) return [self doesNotRecognizeSelector:_cmd];
  delegate->registerFinish();
}

@end

namespace quorvantis::platform {

NSObject::NSObject(void* front) : front_(front), ownsFront_(front == nullptr) {
  if (ownsFront_) front_ = [[QuorvantisPushFront alloc] initWithCore:this];
}

NSObject::~NSObject() {
  if (!ownsFront_) return;
  auto* front = static_cast<QuorvantisPushFront*>(front_);  // construction did not get to its end
  [front forgetCore];
  releaseObject(front);
}

Object NSObject::self() const { return Object::retain(front_); }

bool NSObject::respondsToSelector(Selector /*selector*/) const { return false; }

void NSObject::performSelector(Selector selector, const Object& /*withObject*/) {
  doesNotRecognizeSelector(selector);
}

}  // namespace quorvantis::platform
