// What the framework's sources and the hosts in Swift use of Foundation, declared for the phone's own
// compiler mode.
#pragma once

#include <objc/NSObject.h>

#include <CoreGraphics/CGGeometry.h>

#define NS_ASSUME_NONNULL_BEGIN _Pragma("clang assume_nonnull begin")
#define NS_ASSUME_NONNULL_END _Pragma("clang assume_nonnull end")
#define NS_SWIFT_NAME(name) __attribute__((swift_name(#name)))
#define NS_SWIFT_UI_ACTOR __attribute__((swift_attr("@UIActor")))
#define NS_SWIFT_SENDABLE __attribute__((swift_attr("@Sendable")))
#define NS_TYPED_ENUM __attribute__((swift_wrapper(enum)))
#define NS_ENUM(type, name)                                        \
  enum __attribute__((enum_extensibility(open))) name : type name; \
  enum name : type
#ifdef __cplusplus
#define NS_OPTIONS(type, name) \
  type name;                   \
  enum __attribute__((flag_enum, enum_extensibility(open))) : name
#else
#define NS_OPTIONS(type, name)                                                \
  enum __attribute__((flag_enum, enum_extensibility(open))) name : type name; \
  enum __attribute__((flag_enum, enum_extensibility(open))) name : type
#endif
// What Apple says in Foundation's API notes: the value that Swift makes of the class's instances.
#define BRIDGED_TO_SWIFT(name) __attribute__((swift_bridge(#name)))
#define FOUNDATION_EXPORT FOUNDATION_EXTERN
#ifdef __cplusplus
#define FOUNDATION_EXTERN extern "C"
#else
#define FOUNDATION_EXTERN extern
#endif

typedef struct _NSZone NSZone;
typedef NSInteger NSComparisonResult;
typedef NSUInteger NSStringCompareOptions;
typedef NSUInteger NSStringEncoding;
typedef NSUInteger NSJSONReadingOptions;
enum { NSUTF8StringEncoding = 4 };

typedef struct {
  unsigned long state;
  id __unsafe_unretained* itemsPtr;
  unsigned long* mutationsPtr;
  unsigned long extra[5];
} NSFastEnumerationState;

@protocol NSFastEnumeration
- (NSUInteger)countByEnumeratingWithState:(NSFastEnumerationState*)state
                                  objects:(id __unsafe_unretained[])buffer
                                    count:(NSUInteger)length;
@end

NS_ASSUME_NONNULL_BEGIN

BRIDGED_TO_SWIFT(Foundation.Data)
@interface NSData : NSObject
@property(readonly) NSUInteger length;
@property(readonly) const void* bytes;
@end

BRIDGED_TO_SWIFT(Swift.String)
@interface NSString : NSObject
- (nullable instancetype)initWithBytes:(const void*)bytes
                                length:(NSUInteger)length
                              encoding:(NSStringEncoding)encoding;
- (nullable instancetype)initWithData:(NSData*)data encoding:(NSStringEncoding)encoding;
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

BRIDGED_TO_SWIFT(Swift.Array)
@interface NSArray<__covariant ObjectType> : NSObject
- (ObjectType)objectAtIndex:(NSUInteger)index;
@end

BRIDGED_TO_SWIFT(Swift.Set)
@interface NSSet<__covariant ObjectType> : NSObject <NSFastEnumeration>
@end

BRIDGED_TO_SWIFT(Swift.Dictionary)
@interface NSDictionary<__covariant KeyType, __covariant ObjectType> : NSObject <NSFastEnumeration>
+ (instancetype)dictionaryWithObjects:(const ObjectType _Nonnull[_Nullable])objects
                              forKeys:(const KeyType _Nonnull[_Nullable])keys
                                count:(NSUInteger)count;
- (nullable ObjectType)objectForKey:(KeyType)key;
- (nullable ObjectType)objectForKeyedSubscript:(KeyType)key;
@end

@interface NSMutableDictionary<KeyType, ObjectType> : NSDictionary <KeyType, ObjectType>
- (void)setObject:(ObjectType)object forKey:(KeyType)key;
@end

BRIDGED_TO_SWIFT(Swift.Error)
@interface NSError : NSObject
@end

@interface NSException : NSObject
+ (instancetype)exceptionWithName:(NSString*)name
                           reason:(nullable NSString*)reason
                         userInfo:(nullable NSDictionary*)userInfo;
@end

BRIDGED_TO_SWIFT(Foundation.URL)
@interface NSURL : NSObject
+ (nullable instancetype)URLWithString:(NSString*)text;
@end

NS_SWIFT_NAME(Bundle)
@interface NSBundle : NSObject
@property(class, readonly, strong) NSBundle* mainBundle;
+ (NSBundle*)bundleForClass:(Class)aClass;
+ (nullable NSBundle*)bundleWithIdentifier:(NSString*)identifier;
@property(readonly, nullable) NSDictionary<NSString*, id>* infoDictionary;
@end

@interface NSLocale : NSObject
+ (NSLocale*)currentLocale;
- (nullable id)objectForKey:(NSString*)key;
@end

NS_SWIFT_NAME(UserDefaults) NS_SWIFT_SENDABLE @interface NSUserDefaults : NSObject
@property(class, readonly, strong) NSUserDefaults* standardUserDefaults NS_SWIFT_NAME(standard);
- (nullable id)objectForKey:(NSString*)key;
- (void)setObject:(nullable id)object forKey:(NSString*)key NS_SWIFT_NAME(set(_:forKey:));
- (BOOL)boolForKey:(NSString*)key;
- (BOOL)synchronize;
- (void)removeObjectForKey:(NSString*)key;
@end

@interface NSJSONSerialization : NSObject
+ (nullable id)JSONObjectWithData:(NSData*)data
                          options:(NSJSONReadingOptions)options
                            error:(NSError* _Nullable* _Nullable)error;
@end

FOUNDATION_EXPORT NSString* const NSInternalInconsistencyException;
FOUNDATION_EXPORT NSString* const NSInvalidArgumentException;
FOUNDATION_EXPORT NSString* const NSLocaleCountryCode;
FOUNDATION_EXPORT NSString* NSStringFromClass(Class aClass);
FOUNDATION_EXPORT void NSLog(NSString* format, ...);

NS_ASSUME_NONNULL_END
