// Waits for a socket, and no longer than its listener runs. Any thread.
#pragma once

#include <chrono>

namespace quorvantis::server {

enum class Ready { yes, stopped, late };

/// Waits for `events`, as poll names them; -1 for `socket` only waits. `stop` becomes readable when
/// everything must stop; -1: it never does.
Ready waitFor(int socket, short events, int stop, std::chrono::steady_clock::time_point deadline);

}  // namespace quorvantis::server
