// Sockets and pipes where systems differ: Linux creates a descriptor and marks it close-on-exec in one step,
// so that no process started in between inherits it; plain POSIX needs two. No write here raises SIGPIPE. Any
// thread.
#pragma once

#include <array>
#include <cstddef>

namespace quorvantis::base {

/// All are close-on-exec, or -1 on failure, with errno set.

/// A non-blocking stream socket.
int openSocket(int family);
/// The next connection, non-blocking.
int acceptConnection(int listening);

/// Two connected ends; both -1 on failure.
using Ends = std::array<int, 2>;
/// The first reads what the second writes.
Ends openPipe();
/// Local stream sockets. They block.
Ends openSocketPair();

/// As `send` without flags does.
std::ptrdiff_t sendTo(int socket, const char* bytes, std::size_t size);

}  // namespace quorvantis::base
