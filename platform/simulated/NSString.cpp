#include "platform/NSString.h"

#include <string>

#include "base/utf8.h"
#include "device/text.h"
#include "platform/simulated/values.h"

namespace quorvantis::platform {

using simulated::DataInstance;
using simulated::known;
using simulated::StringInstance;

NSString NSString::stringWithUTF8String(std::string_view text) {
  return Object::adopt(StringInstance::make(text)).as<NSString>();
}

NSString NSString::initWithData(const NSData& data) {
  const auto* instance = known<DataInstance>(data);
  if (instance == nullptr || !base::isUTF8(instance->bytes)) return nullptr;
  return stringWithUTF8String(base::withoutByteOrderMark(instance->bytes));
}

NSString NSString::stringWithFormat(std::string_view format, std::initializer_list<Object> arguments) {
  constexpr std::string_view kObject = "%@";
  std::size_t length = format.size();
  for (const Object& argument : arguments) {
    if (const auto* string = simulated::instanceAs<StringInstance>(argument)) length += string->text.size();
  }
  std::string text;
  text.reserve(length);
  for (const Object& argument : arguments) {
    const std::size_t place = format.find(kObject);
    text += format.substr(0, place);
    if (const auto* string = simulated::instanceAs<StringInstance>(argument)) {
      text += string->text;
    } else {
      text += simulated::textOf(argument).value_or("(null)");
    }
    format.remove_prefix(place + kObject.size());
  }
  return stringWithUTF8String(text.append(format));
}

bool NSString::isEqualToString(const NSString& other) const {
  const auto* receiver = simulated::receiver<StringInstance>(*this, {"isEqualToString:"});
  return receiver != nullptr && other && receiver->isEqual(*simulated::instanceOf(other));
}

NSComparisonResult NSString::compare(const NSString& other, unsigned long /*options*/) const {
  const auto* receiver = simulated::receiver<StringInstance>(*this, {"compare:options:"});
  if (receiver == nullptr) return NSComparisonResult::same;
  const int order = device::compareNumerically(receiver->text, simulated::textOf(other).value_or(""));
  if (order == 0) return NSComparisonResult::same;
  return order < 0 ? NSComparisonResult::ascending : NSComparisonResult::descending;
}

NSString NSString::stringByReplacingOccurrencesOfString(const NSString& target,
                                                        const NSString& withString) const {
  const auto* receiver =
      simulated::receiver<StringInstance>(*this, {"stringByReplacingOccurrencesOfString:withString:"});
  if (receiver == nullptr) return nullptr;
  const std::string_view from = known<StringInstance>(target)->text;
  const std::string_view to = known<StringInstance>(withString)->text;
  std::string text(receiver->text);
  for (std::size_t at = text.find(from); at != std::string::npos; at = text.find(from, at + to.size())) {
    text.replace(at, from.size(), to);
  }
  return stringWithUTF8String(text);
}

}  // namespace quorvantis::platform
