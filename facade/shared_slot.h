// The process-wide reference to the shared Push. Hosts can't reset it; a simulated device's relaunch and the
// tests, which run in one process, can. Not exported.
#pragma once

namespace quorvantis {

/// Empties the slot and breaks the cycle between the shared Push and its client, as the end of a process
/// does. Main thread; nobody may be using the shared Push.
void emptySharedSlot();

}  // namespace quorvantis
