// The table of steps as JSON, for user interfaces. Any thread.
#pragma once

#include "json/value.h"

namespace quorvantis::phone {

/// {"steps":[{"name","about","variant","keys":[{"name","kind","description","choices","null","required"}]}]}
json::Value stepSchema();

}  // namespace quorvantis::phone
