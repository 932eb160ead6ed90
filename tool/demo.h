// `quorvantis-push demo`: a few days in the life of one phone, as a timeline.
#pragma once

namespace quorvantis::tool {

/// Returns the exit status: 0 when everything went as expected.
int demo();

}  // namespace quorvantis::tool
