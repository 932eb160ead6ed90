#include "base/descriptors.h"

#include <fcntl.h>
#include <sys/socket.h>
#include <unistd.h>

namespace quorvantis::base {

#ifdef SOCK_CLOEXEC  // Linux and the BSDs

int openSocket(int family) {
  return ::socket(family, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0);
}

int acceptConnection(int listening) {
  return ::accept4(listening, nullptr, nullptr, SOCK_CLOEXEC | SOCK_NONBLOCK);
}

Ends openPipe() {
  Ends ends{-1, -1};
  if (::pipe2(ends.data(), O_CLOEXEC) != 0) return {-1, -1};
  return ends;
}

Ends openSocketPair() {
  Ends ends{-1, -1};
  if (::socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, ends.data()) != 0) return {-1, -1};
  return ends;
}

std::ptrdiff_t sendTo(int socket, const char* bytes, std::size_t size) {
  return ::send(socket, bytes, size, MSG_NOSIGNAL);
}

#else  // macOS

namespace {

int marked(int descriptor) {
  if (descriptor >= 0) ::fcntl(descriptor, F_SETFD, FD_CLOEXEC);
  return descriptor;
}

int markedSocket(int socket) {
  const int yes = 1;
  if (socket >= 0) ::setsockopt(socket, SOL_SOCKET, SO_NOSIGPIPE, &yes, sizeof yes);
  return marked(socket);
}

int withoutBlocking(int socket) {
  if (socket >= 0) ::fcntl(socket, F_SETFL, ::fcntl(socket, F_GETFL) | O_NONBLOCK);
  return socket;
}

}  // namespace

int openSocket(int family) {
  return withoutBlocking(markedSocket(::socket(family, SOCK_STREAM, 0)));
}

int acceptConnection(int listening) {
  return withoutBlocking(markedSocket(::accept(listening, nullptr, nullptr)));
}

Ends openPipe() {
  Ends ends{-1, -1};
  if (::pipe(ends.data()) != 0) return {-1, -1};
  return {marked(ends[0]), marked(ends[1])};
}

Ends openSocketPair() {
  Ends ends{-1, -1};
  if (::socketpair(AF_UNIX, SOCK_STREAM, 0, ends.data()) != 0) return {-1, -1};
  return {markedSocket(ends[0]), markedSocket(ends[1])};
}

std::ptrdiff_t sendTo(int socket, const char* bytes, std::size_t size) {
  return ::send(socket, bytes, size, 0);
}

#endif

}  // namespace quorvantis::base
