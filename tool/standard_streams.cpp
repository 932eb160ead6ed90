#include "tool/standard_streams.h"

#include <poll.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <climits>
#include <csignal>
#include <cstddef>

namespace quorvantis::tool {

namespace {

constexpr int kForever = -1;
constexpr int kLastChance = 1000;  // milliseconds

// A pipe that is ready for writing takes this many bytes without blocking (POSIX, write()).
constexpr std::size_t kMostAtOnce = PIPE_BUF;

}  // namespace

StandardStreams::StandardStreams() : stop_(server::openPipe()) {
  std::signal(SIGPIPE, SIG_IGN);
}

bool StandardStreams::awaitEndOfInput() {
  for (;;) {
    std::array<pollfd, 2> ends{{{STDIN_FILENO, POLLIN, 0}, {stop_.out.get(), POLLIN, 0}}};
    if (::poll(ends.data(), ends.size(), kForever) < 0 && errno != EINTR) return true;
    if (ends[1].revents != 0) return false;
    if (ends[0].revents == 0) continue;
    std::array<char, 4096> discarded{};
    const auto count = ::read(STDIN_FILENO, discarded.data(), discarded.size());
    if (count == 0 || (count < 0 && errno != EINTR && errno != EAGAIN)) return true;
  }
}

bool StandardStreams::write(std::string_view text) {
  while (!text.empty()) {
    if (!isOutputReady()) return false;
    const auto count = ::write(STDOUT_FILENO, text.data(), std::min(text.size(), kMostAtOnce));
    if (count < 0 && errno != EINTR && errno != EAGAIN) return false;
    if (count > 0) text.remove_prefix(static_cast<std::size_t>(count));
  }
  return true;
}

bool StandardStreams::isOutputReady() {
  std::array<pollfd, 2> ends{{{STDOUT_FILENO, POLLOUT, 0}, {stop_.out.get(), POLLIN, 0}}};
  while (::poll(ends.data(), ends.size(), kForever) < 0) {
    if (errno != EINTR) return false;
  }
  if (ends[0].revents != 0) return true;
  return ::poll(ends.data(), 1, kLastChance) > 0;
}

void StandardStreams::stop() {
  while (::write(stop_.in.get(), "", 1) < 0 && errno == EINTR) {
  }
}

}  // namespace quorvantis::tool
