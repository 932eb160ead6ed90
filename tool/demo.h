// `quorvantis-push demo`: a few days in the life of one phone, told as a timeline.
#pragma once

namespace quorvantis::tool {

/// Returns the exit status: 0 when all went as it must.
int demo();

}  // namespace quorvantis::tool
