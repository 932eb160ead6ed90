#include "platform/NSArray.h"

#include "platform/simulated/values.h"

namespace quorvantis::platform {

Object NSArray::objectAtIndex(std::size_t index) const {
  constexpr Selector kSelector{"objectAtIndex:"};
  const auto* array = simulated::receiver<simulated::ArrayInstance>(*this, kSelector);
  if (array == nullptr) return nullptr;
  if (index >= array->elements.size()) doesNotRecognizeSelector(kSelector);
  return array->elements[index];
}

}  // namespace quorvantis::platform
