#include "server/readiness.h"

#include <poll.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <climits>
#include <cstdint>

namespace quorvantis::server {
namespace {

using Clock = std::chrono::steady_clock;
using std::chrono::milliseconds;

int remaining(Clock::time_point deadline) {
  const auto left = std::chrono::ceil<milliseconds>(deadline - Clock::now()).count();
  return static_cast<int>(std::clamp<std::int64_t>(left, 0, INT_MAX));
}

}  // namespace

Ready waitFor(int socket, short events, int stop, Clock::time_point deadline) {
  for (;;) {
    std::array<pollfd, 2> watched{{{socket, events, 0}, {stop, POLLIN, 0}}};
    const int count = ::poll(watched.data(), watched.size(), remaining(deadline));
    if (count > 0) return watched[1].revents != 0 ? Ready::stopped : Ready::yes;
    if (count == 0) return Ready::late;
    if (errno != EINTR) return Ready::late;
  }
}

}  // namespace quorvantis::server
