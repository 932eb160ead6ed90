#include "scenario/delivery.h"

namespace quorvantis::scenario {

std::vector<Arrival> arrivalsOf(const json::Dictionary& userInfo, device::ApplicationState state) {
  std::vector<Arrival> arrivals;
  if (state != device::ApplicationState::background) arrivals.push_back(Arrival::foreground);
  const auto aps = userInfo.find("aps");
  const json::Value* flag = aps == userInfo.end() ? nullptr : aps->second.find("content-available");
  if (flag != nullptr && *flag == json::Value(1)) arrivals.push_back(Arrival::background);
  return arrivals;
}

}  // namespace quorvantis::scenario
