// Foundation where GNUstep's differs from the phone's or lacks something: the user defaults, bundles, the
// locale, URLs, JSON reading, and some operations of numbers and strings.
#import <QuorvantisPush/QuorvantisPush.h>

#include "base/utf8.h"
#include "device/text.h"
#include "json/read.h"
#include "json/write.h"
#include "tests/gnustep/standins.h"

using quorvantis::device::Device;
using quorvantis::standins::deviceInUse;
using quorvantis::standins::objectFrom;
using quorvantis::standins::stringFrom;
using quorvantis::standins::textOf;
using quorvantis::standins::valueFrom;

namespace json = quorvantis::json;

@interface DeviceUserDefaults : NSUserDefaults
@end

@implementation DeviceUserDefaults

- (id)objectForKey:(NSString*)key {
  if (deviceInUse() == nullptr) return nil;
  const auto value = deviceInUse()->userDefault(textOf(key).value_or(""));
  return value ? objectFrom(*value) : nil;
}

- (void)removeObjectForKey:(NSString*)key {
  deviceInUse()->removeFromElsewhere({textOf(key).value_or("")});
}

- (void)setObject:(id)object forKey:(NSString*)key {
  const std::string name = textOf(key).value_or("");
  if (object == nil) return deviceInUse()->setUserDefault(name, std::nullopt);
  std::optional<json::Value> value = valueFrom(object);
  if (!value || !quorvantis::device::isPropertyList(*value)) return [self doesNotRecognizeSelector:_cmd];
  deviceInUse()->setUserDefault(name, std::move(value));
}

- (BOOL)synchronize {
  return deviceInUse() != nullptr && deviceInUse()->synchronizeUserDefaults();
}

@end

@implementation NSUserDefaults (Device)

+ (NSUserDefaults*)standardUserDefaults {
  static NSUserDefaults* defaults = [DeviceUserDefaults alloc];
  return defaults;
}

@end

/// A bundle that only has a version.
@interface DeviceBundle : NSBundle {
  BOOL _isLibrary;
}
@end

@implementation DeviceBundle

+ (DeviceBundle*)bundleOfLibrary:(BOOL)isLibrary {
  static DeviceBundle* bundles[] = {[DeviceBundle alloc], [DeviceBundle alloc]};
  bundles[1]->_isLibrary = YES;
  return bundles[isLibrary ? 1 : 0];
}

- (NSDictionary*)infoDictionary {
  if (deviceInUse() == nullptr) return [NSDictionary dictionary];
  const auto& version = _isLibrary ? deviceInUse()->library.version : deviceInUse()->application.version;
  json::Dictionary info;
  if (version) info.emplace("CFBundleShortVersionString", *version);
  return objectFrom(info);
}

@end

@implementation NSBundle (Device)

+ (NSBundle*)mainBundle {
  return [DeviceBundle bundleOfLibrary:NO];
}

+ (NSBundle*)bundleForClass:(Class)aClass {
  return [DeviceBundle bundleOfLibrary:[aClass isSubclassOfClass:[Push class]]];
}

+ (NSBundle*)bundleWithIdentifier:(NSString*)identifier {
  const bool found =
      deviceInUse()->library.loaded && [identifier isEqualToString:@"com.quorvantis.QuorvantisPush"];
  return found ? [DeviceBundle bundleOfLibrary:YES] : nil;
}

@end

@interface DeviceLocale : NSLocale
@end

@implementation DeviceLocale

- (id)objectForKey:(id)key {
  if (deviceInUse() == nullptr || ![key isEqual:NSLocaleCountryCode]) return nil;
  return stringFrom(deviceInUse()->facts.country);
}

@end

@implementation NSLocale (Device)

+ (id)currentLocale {
  static NSLocale* locale = [DeviceLocale alloc];
  return locale;
}

@end

@interface DeviceURL : NSURL {
  NSString* _text;
}
@end

@implementation DeviceURL

- (instancetype)initWithText:(NSString*)text {
  _text = [text copy];
  return self;
}

- (void)dealloc {
  [_text release];
  [super dealloc];
}

- (NSString*)absoluteString {
  return _text;
}

@end

@implementation NSURL (Device)

+ (id)URLWithString:(NSString*)text {
  // The phone's asks for the length first, of whatever it is given.
  if (text != nil && ![text respondsToSelector:@selector(length)]) {
    [text doesNotRecognizeSelector:@selector(length)];
  }
  const auto url = quorvantis::device::urlFrom(textOf(text).value_or(""), deviceInUse()->facts.systemVersion);
  return url ? [[[DeviceURL alloc] initWithText:stringFrom(url)] autorelease] : nil;
}

@end

@implementation NSJSONSerialization (Device)

+ (id)JSONObjectWithData:(NSData*)data options:(NSJSONReadingOptions)options error:(NSError**)error {
  const std::string_view bytes(static_cast<const char*>([data bytes]), [data length]);
  const auto read = json::read(quorvantis::base::withoutByteOrderMark(bytes), {.keepUnsignedIntegers = true});
  const auto* value = std::get_if<json::Value>(&read);
  if (value == nullptr) return nil;
  const bool isContainer = value->get<json::Dictionary>() != nullptr || value->get<json::Array>() != nullptr;
  return isContainer ? objectFrom(*value) : nil;
}

@end

@interface NSDoubleNumber : NSNumber
@end

// GNUstep shows 16 digits, and its conversion to whole numbers is undefined beyond their range.
@implementation NSDoubleNumber (Device)

- (NSString*)descriptionWithLocale:(id)locale {
  return stringFrom(json::shortest([self doubleValue]));
}

- (NSInteger)integerValue {
  return quorvantis::device::integerValue([self doubleValue]);
}

@end

@implementation NSString (Device)

- (NSComparisonResult)compare:(NSString*)other options:(NSUInteger)options {
  if (options != NSNumericSearch) {
    return [self compare:other options:options range:NSMakeRange(0, [self length])];
  }
  const int order = quorvantis::device::compareNumerically(*textOf(self), textOf(other).value_or(""));
  if (order == 0) return NSOrderedSame;
  return order < 0 ? NSOrderedAscending : NSOrderedDescending;
}

@end

namespace quorvantis::standins {

namespace {

Device* used = nullptr;

}  // namespace

void useDevice(Device* device) { used = device; }

Device* deviceInUse() { return used; }

}  // namespace quorvantis::standins
