#include "platform/NSData.h"

#include "platform/simulated/values.h"

namespace quorvantis::platform {

using simulated::DataInstance;
using simulated::receiver;

std::size_t NSData::length() const {
  const auto* data = receiver<DataInstance>(*this, {"length"});
  return data == nullptr ? 0 : data->bytes.size();
}

const unsigned char* NSData::bytes() const {
  const auto* data = receiver<DataInstance>(*this, {"bytes"});
  return data == nullptr ? nullptr : reinterpret_cast<const unsigned char*>(data->bytes.data());
}

NSString NSData::description() const {
  return simulated::stringFrom(simulated::textOf(*this));
}

}  // namespace quorvantis::platform
