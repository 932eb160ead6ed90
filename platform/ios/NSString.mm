#include "platform/NSString.h"

#include "platform/ios/bridge.h"

namespace quorvantis::platform {

using ios::adopted;
using ios::objectOf;
using ios::retained;
using ios::textFrom;

NSString NSString::stringWithUTF8String(std::string_view text) { return retained<NSString>(textFrom(text)); }

NSString NSString::initWithData(const NSData& data) {
  if (!data) return nullptr;
  return adopted<NSString>([[::NSString alloc] initWithData:objectOf(data) encoding:NSUTF8StringEncoding]);
}

NSString NSString::stringWithFormat(std::string_view format, std::initializer_list<Object> arguments) {
  constexpr std::string_view kObject = "%@";
  ::NSMutableString* text = [::NSMutableString string];
  for (const Object& argument : arguments) {
    const std::size_t place = format.find(kObject);
    [text appendString:textFrom(format.substr(0, place))];
    [text appendFormat:@"%@", objectOf(argument)];
    format.remove_prefix(place + kObject.size());
  }
  [text appendString:textFrom(format)];
  return adopted<NSString>([text copy]);
}

bool NSString::isEqualToString(const NSString& other) const {
  return [objectOf(*this) isEqualToString:objectOf(other)];
}

NSComparisonResult NSString::compare(const NSString& other, unsigned long options) const {
  ::NSString* receiver = objectOf(*this);
  return static_cast<NSComparisonResult>([receiver compare:objectOf(other)
                                                   options:static_cast<NSStringCompareOptions>(options)]);
}

NSString NSString::stringByReplacingOccurrencesOfString(const NSString& target,
                                                        const NSString& withString) const {
  return retained<NSString>([objectOf(*this) stringByReplacingOccurrencesOfString:objectOf(target)
                                                                       withString:objectOf(withString)]);
}

}  // namespace quorvantis::platform
