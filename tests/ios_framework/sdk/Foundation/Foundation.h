// What the framework's sources use of Foundation and of the runtime, declared for the phone's own compiler
// mode.
#pragma once

#include <objc/objc.h>

#include <CoreGraphics/CGGeometry.h>

#define NS_ASSUME_NONNULL_BEGIN _Pragma("clang assume_nonnull begin")
#define NS_ASSUME_NONNULL_END _Pragma("clang assume_nonnull end")
#define NS_SWIFT_NAME(name) __attribute__((swift_name(#name)))
#define NS_ENUM(type, name)                                        \
  enum __attribute__((enum_extensibility(open))) name : type name; \
  enum name : type
#define FOUNDATION_EXPORT FOUNDATION_EXTERN
#ifdef __cplusplus
#define FOUNDATION_EXTERN extern "C"
#else
#define FOUNDATION_EXTERN extern
#endif

typedef long NSInteger;
typedef unsigned long NSUInteger;
typedef struct _NSZone NSZone;
typedef NSInteger NSComparisonResult;
typedef NSUInteger NSStringCompareOptions;
typedef NSUInteger NSStringEncoding;
typedef NSUInteger NSJSONReadingOptions;
enum { NSUTF8StringEncoding = 4 };

@class NSDictionary, NSString;

@protocol NSObject
- (Class)class;
- (BOOL)isEqual:(id)object;
- (BOOL)isKindOfClass:(Class)aClass;
- (BOOL)respondsToSelector:(SEL)aSelector;
- (id)performSelector:(SEL)aSelector withObject:(id)object;
- (instancetype)retain;
- (oneway void)release;
- (instancetype)autorelease;
- (NSString*)description;
@end

__attribute__((objc_root_class))
@interface NSObject<NSObject> {
  Class isa;
}
+ (instancetype)new;
+ (instancetype)alloc;
+ (instancetype)allocWithZone:(struct _NSZone*)zone;
+ (Class)class;
- (instancetype)init;
- (id)copy;
- (void)dealloc;
- (void)doesNotRecognizeSelector:(SEL)aSelector;
@end

typedef struct {
  unsigned long state;
  id* itemsPtr;
  unsigned long* mutationsPtr;
  unsigned long extra[5];
} NSFastEnumerationState;

@protocol NSFastEnumeration
- (NSUInteger)countByEnumeratingWithState:(NSFastEnumerationState*)state
                                  objects:(id[])buffer
                                    count:(NSUInteger)length;
@end

@interface NSData : NSObject
@property(readonly) NSUInteger length;
@property(readonly) const void* bytes;
@end

@interface NSString : NSObject
- (instancetype)initWithBytes:(const void*)bytes
                       length:(NSUInteger)length
                     encoding:(NSStringEncoding)encoding;
- (instancetype)initWithData:(NSData*)data encoding:(NSStringEncoding)encoding;
+ (instancetype)stringWithFormat:(NSString*)format, ...;
+ (instancetype)string;
- (BOOL)isEqualToString:(NSString*)other;
- (NSComparisonResult)compare:(NSString*)other options:(NSStringCompareOptions)options;
- (NSString*)stringByReplacingOccurrencesOfString:(NSString*)target withString:(NSString*)replacement;
@property(readonly) NSInteger integerValue;
@end

@interface NSConstantString : NSString
@end

@interface NSMutableString : NSString
- (void)appendString:(NSString*)string;
- (void)appendFormat:(NSString*)format, ...;
@end

@interface NSNumber : NSObject
@property(readonly) NSInteger integerValue;
@end

@interface NSArray : NSObject
- (id)objectAtIndex:(NSUInteger)index;
@end

@interface NSSet : NSObject <NSFastEnumeration>
@end

@interface NSDictionary : NSObject <NSFastEnumeration>
+ (instancetype)dictionaryWithObjects:(const id[])objects forKeys:(const id[])keys count:(NSUInteger)count;
- (id)objectForKey:(id)key;
- (id)objectForKeyedSubscript:(id)key;
@end

@interface NSMutableDictionary : NSDictionary
- (void)setObject:(id)object forKey:(id)key;
@end

@interface NSError : NSObject
@end

@interface NSException : NSObject
+ (instancetype)exceptionWithName:(NSString*)name reason:(NSString*)reason userInfo:(NSDictionary*)userInfo;
@end

@interface NSURL : NSObject
+ (instancetype)URLWithString:(NSString*)text;
@end

@interface NSBundle : NSObject
+ (NSBundle*)mainBundle;
+ (NSBundle*)bundleForClass:(Class)aClass;
+ (NSBundle*)bundleWithIdentifier:(NSString*)identifier;
@property(readonly) NSDictionary* infoDictionary;
@end

@interface NSLocale : NSObject
+ (NSLocale*)currentLocale;
- (id)objectForKey:(NSString*)key;
@end

@interface NSUserDefaults : NSObject
+ (NSUserDefaults*)standardUserDefaults;
- (id)objectForKey:(NSString*)key;
- (void)setObject:(id)object forKey:(NSString*)key;
- (BOOL)synchronize;
- (void)removeObjectForKey:(NSString*)key;
@end

@interface NSJSONSerialization : NSObject
+ (id)JSONObjectWithData:(NSData*)data options:(NSJSONReadingOptions)options error:(NSError**)error;
@end

FOUNDATION_EXPORT NSString* const NSInternalInconsistencyException;
FOUNDATION_EXPORT NSString* const NSInvalidArgumentException;
FOUNDATION_EXPORT NSString* const NSLocaleCountryCode;
FOUNDATION_EXPORT NSString* NSStringFromClass(Class aClass);
FOUNDATION_EXPORT void NSLog(NSString* format, ...);
