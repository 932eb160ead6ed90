#include "server/socket.h"

#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <string>

#include "server/server_error.h"

namespace quorvantis::server {
namespace {

constexpr int kBacklog = SOMAXCONN;  // a client that finds it full tries again after a second

[[noreturn]] void refuse(std::uint16_t port, int error) {
  const std::string name = "port " + std::to_string(port);
  if (error == EADDRINUSE) {
    throw ServerError(name + " is in use by another program; choose another port");
  }
  if (error == EACCES) {
    throw ServerError(name + " is open to the administrator only; choose a port from 1024 on");
  }
  throw ServerError(name + " can't be used: " + std::strerror(error));
}

}  // namespace

Socket::~Socket() {
  if (descriptor_ >= 0) ::close(descriptor_);
}

Socket bindToLoopback(std::uint16_t port) {
  Socket bound(::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0));
  if (bound.get() < 0) refuse(port, errno);
  if (port != 0) {
    // A port of which only closed connections are left is free; one with a listener is not.
    const int yes = 1;
    ::setsockopt(bound.get(), SOL_SOCKET, SO_REUSEADDR, &yes, sizeof yes);
  }
  sockaddr_in address{};
  address.sin_family = AF_INET;
  address.sin_port = htons(port);
  address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
  if (::bind(bound.get(), reinterpret_cast<const sockaddr*>(&address), sizeof address) != 0)
    refuse(port, errno);
  return bound;
}

Socket listenOnLoopback(std::uint16_t port) {
  Socket listening = bindToLoopback(port);
  if (::listen(listening.get(), kBacklog) != 0) refuse(port, errno);
  return listening;
}

std::uint16_t boundPort(const Socket& socket) {
  sockaddr_in address{};
  socklen_t size = sizeof address;
  if (::getsockname(socket.get(), reinterpret_cast<sockaddr*>(&address), &size) != 0) return 0;
  return ntohs(address.sin_port);
}

}  // namespace quorvantis::server
