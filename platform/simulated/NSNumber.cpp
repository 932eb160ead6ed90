#include "platform/NSNumber.h"

#include <limits>

#include "device/text.h"
#include "platform/simulated/values.h"

namespace quorvantis::platform {

NSInteger NSNumber::integerValue() const {
  using namespace simulated;
  if (!*this) return 0;
  if (const auto* text = instanceAs<StringInstance>(*this)) return device::integerValue(text->text);
  const auto* number = receiver<NumberInstance>(*this, {"integerValue"});
  if (const auto* real = std::get_if<double>(&number->number)) return device::integerValue(*real);
  if (std::holds_alternative<std::uint64_t>(number->number)) return std::numeric_limits<NSInteger>::max();
  return std::visit([](auto value) { return static_cast<NSInteger>(value); }, number->number);
}

}  // namespace quorvantis::platform
