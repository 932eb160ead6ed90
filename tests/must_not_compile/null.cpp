#include "scenario/step_row.h"

using namespace quorvantis::scenario;

Rule rule() {
#ifdef REFUSED
  const auto kind = orNull(text());
#else
  const auto kind = text();
#endif
  return sets("name", kind,
              [](const World& world, const std::string& name) { world.device.facts.name = name; });
}
