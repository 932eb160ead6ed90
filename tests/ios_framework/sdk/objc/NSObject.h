// The root class and its protocol.
#pragma once

#include <objc/objc.h>

#define OBJC_SWIFT_UNAVAILABLE __attribute__((availability(swift, unavailable)))

#pragma clang assume_nonnull begin

@class NSString;

@protocol NSObject
- (Class)class OBJC_SWIFT_UNAVAILABLE;
- (BOOL)isEqual:(nullable id)object;
- (BOOL)isKindOfClass:(Class)aClass;
- (BOOL)respondsToSelector:(SEL)aSelector;
- (nullable id)performSelector:(SEL)aSelector withObject:(nullable id)object OBJC_SWIFT_UNAVAILABLE;
- (instancetype)retain OBJC_SWIFT_UNAVAILABLE;
- (oneway void)release OBJC_SWIFT_UNAVAILABLE;
- (instancetype)autorelease OBJC_SWIFT_UNAVAILABLE;
- (NSString*)description OBJC_SWIFT_UNAVAILABLE;
@end

__attribute__((objc_root_class))
@interface NSObject<NSObject> {
  Class isa;
}
+ (instancetype)new OBJC_SWIFT_UNAVAILABLE;
+ (instancetype)alloc OBJC_SWIFT_UNAVAILABLE;
+ (instancetype)allocWithZone:(nullable struct _NSZone*)zone OBJC_SWIFT_UNAVAILABLE;
+ (Class)class OBJC_SWIFT_UNAVAILABLE;
- (instancetype)init;
- (id)copy;
- (void)dealloc OBJC_SWIFT_UNAVAILABLE;
- (void)doesNotRecognizeSelector:(nullable SEL)aSelector;
@end

#pragma clang assume_nonnull end
