// Sockets and pipes, as far as systems differ: Linux makes and marks a descriptor in one step, so that no
// process started in between inherits it; POSIX alone takes two. No write here ends the process with SIGPIPE.
// Any thread.
#pragma once

#include <array>
#include <cstddef>

namespace quorvantis::base {

/// All are closed on exec, and -1 on failure, with errno set.

/// A stream socket that does not block.
int openSocket(int family);
/// The next connection, which does not block either.
int acceptConnection(int listening);

/// Two ends that are connected; both -1 on failure.
using Ends = std::array<int, 2>;
/// The first reads what the second writes.
Ends openPipe();
/// Local stream sockets. They block.
Ends openSocketPair();

/// As `send` without flags does.
std::ptrdiff_t sendTo(int socket, const char* bytes, std::size_t size);

}  // namespace quorvantis::base
