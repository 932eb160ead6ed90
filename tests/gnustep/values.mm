// Values as GNUstep's objects, and back.
#include <Block.h>

#include "tests/gnustep/standins.h"

@interface DeviceError : NSError {
  NSString* _text;
}
@end

@implementation DeviceError

- (instancetype)initWithText:(NSString*)text {
  self = [super initWithDomain:@"device" code:1 userInfo:nil];
  if (self != nil) _text = [text copy];
  return self;
}

- (void)dealloc {
  [_text release];
  [super dealloc];
}

- (NSString*)description {
  return _text;
}

@end

namespace quorvantis::standins {

namespace {

struct ObjectMaker {
  id operator()(std::nullptr_t) const { return [NSNull null]; }
  id operator()(bool boolean) const { return [NSNumber numberWithBool:boolean]; }
  id operator()(std::int64_t number) const { return [NSNumber numberWithLongLong:number]; }
  id operator()(std::uint64_t number) const { return [NSNumber numberWithUnsignedLongLong:number]; }
  id operator()(double number) const { return [NSNumber numberWithDouble:number]; }
  id operator()(const std::string& text) const { return stringFrom(text); }
  id operator()(const json::Data& data) const {
    return [NSData dataWithBytes:data.bytes.data() length:data.bytes.size()];
  }
  id operator()(const json::Array& array) const {
    NSMutableArray* objects = [NSMutableArray array];
    for (const json::Value& element : array) [objects addObject:objectFrom(element)];
    return [[objects copy] autorelease];
  }
  id operator()(const json::Dictionary& dictionary) const {
    NSMutableDictionary* objects = [NSMutableDictionary dictionary];
    for (const auto& [key, value] : dictionary) [objects setObject:objectFrom(value) forKey:stringFrom(key)];
    return [[objects copy] autorelease];
  }
};

std::string bytesOf(NSData* data) { return {static_cast<const char*>([data bytes]), [data length]}; }

json::Value numberFrom(NSNumber* number) {
  if (number == [NSNumber numberWithBool:YES]) return true;
  if (number == [NSNumber numberWithBool:NO]) return false;
  const char type = *[number objCType];
  if (type == 'd' || type == 'f') return [number doubleValue];
  if (type == 'Q') return std::uint64_t{[number unsignedLongLongValue]};
  return std::int64_t{[number longLongValue]};
}

std::optional<json::Value> arrayFrom(NSArray* array) {
  json::Array values;
  for (id element in array) {
    std::optional<json::Value> value = valueFrom(element);
    if (!value) return std::nullopt;
    values.push_back(*std::move(value));
  }
  return json::Value(std::move(values));
}

std::optional<json::Value> dictionaryFrom(NSDictionary* dictionary) {
  json::Dictionary values;
  for (id key in dictionary) {
    std::optional<json::Value> value = valueFrom([dictionary objectForKey:key]);
    if (!value) return std::nullopt;
    values.emplace(textOf(key).value_or(""), *std::move(value));
  }
  return json::Value(std::move(values));
}

}  // namespace

id objectFrom(const json::Value& value) { return std::visit(ObjectMaker{}, value.variant()); }

std::optional<json::Value> valueFrom(id object) {
  if (object == nil || object == [NSNull null]) return json::Value();
  if ([object isKindOfClass:[NSString class]]) return json::Value(*textOf(object));
  if ([object isKindOfClass:[NSNumber class]]) return numberFrom(object);
  if ([object isKindOfClass:[NSData class]]) return json::Value(json::Data{bytesOf(object)});
  if ([object isKindOfClass:[NSArray class]]) return arrayFrom(object);
  if ([object isKindOfClass:[NSDictionary class]]) return dictionaryFrom(object);
  return std::nullopt;
}

NSString* stringFrom(const std::optional<std::string>& text) {
  if (!text) return nil;
  return [[[NSString alloc] initWithBytes:text->data() length:text->size()
                                 encoding:NSUTF8StringEncoding] autorelease];
}

std::optional<std::string> textOf(id object) {
  if (object == nil) return std::nullopt;
  return bytesOf([[object description] dataUsingEncoding:NSUTF8StringEncoding]);
}

NSError* errorFrom(const std::optional<std::string>& text) {
  if (!text) return nil;
  return [[[DeviceError alloc] initWithText:stringFrom(text)] autorelease];
}

std::shared_ptr<void> holdObject(id object) {
  return {[object retain], [](void* held) { [static_cast<id>(held) release]; }};
}

std::shared_ptr<void> holdBlock(const void* block) {
  if (block == nullptr) return nullptr;
  return {static_cast<void*>(Block_copy(const_cast<void*>(block))), [](void* held) { Block_release(held); }};
}

}  // namespace quorvantis::standins
