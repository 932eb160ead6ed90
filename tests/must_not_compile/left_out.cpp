#include "scenario/step_row.h"

using namespace quorvantis::scenario;

Rule rule() {
#ifdef REFUSED
  const auto key = optional("hex", hexadecimal());
#else
  const auto key = required("hex", hexadecimal());
#endif
  return does([](const World& world, const std::string& token) { world.host.deliverToken(token); }, key);
}
