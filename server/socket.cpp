#include "server/socket.h"

#include <arpa/inet.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <string>

#include "base/descriptors.h"
#include "server/server_error.h"

namespace quorvantis::server {
namespace {

constexpr int kBacklog = SOMAXCONN;  // a client that finds it full retries after a second

[[noreturn]] void refuse(const std::string& address, std::uint16_t port, int error) {
  const std::string name = "port " + std::to_string(port);
  if (error == EADDRINUSE) {
    throw ServerError(name + " is in use by another program; choose another port");
  }
  if (error == EACCES) {
    throw ServerError(name + " can only be used by the administrator; choose a port from 1024 on");
  }
  if (error == EADDRNOTAVAIL) throw ServerError(address + " is not an address of this machine");
  throw ServerError(name + " of " + address + " can't be used: " + std::strerror(error));
}

/// An address of IPv4 or IPv6 as the system takes it.
struct Address {
  sockaddr_storage storage{};
  socklen_t size = 0;
};

Address read(const std::string& text, std::uint16_t port) {
  Address address;
  auto& v4 = reinterpret_cast<sockaddr_in&>(address.storage);
  auto& v6 = reinterpret_cast<sockaddr_in6&>(address.storage);
  if (::inet_pton(AF_INET, text.c_str(), &v4.sin_addr) == 1) {
    v4.sin_family = AF_INET;
    v4.sin_port = htons(port);
    address.size = sizeof v4;
  } else if (::inet_pton(AF_INET6, text.c_str(), &v6.sin6_addr) == 1) {
    v6.sin6_family = AF_INET6;
    v6.sin6_port = htons(port);
    address.size = sizeof v6;
  } else {
    throw ServerError('"' + text + "\" is not a numeric address such as 127.0.0.1 or ::1");
  }
  return address;
}

}  // namespace

Socket::~Socket() {
  if (descriptor_ >= 0) ::close(descriptor_);
}

Pipe openPipe() {
  const base::Ends ends = base::openPipe();
  if (ends[0] < 0) throw ServerError(std::string("a pipe can't be opened: ") + std::strerror(errno));
  return {Socket(ends[0]), Socket(ends[1])};
}

bool isLoopback(const std::string& address) {
  in_addr v4{};
  return (::inet_pton(AF_INET, address.c_str(), &v4) == 1 && ntohl(v4.s_addr) >> 24 == 127) ||
         address == "::1";
}

Socket bindTo(const std::string& text, std::uint16_t port) {
  const Address address = read(text, port);
  Socket bound(base::openSocket(address.storage.ss_family));
  if (bound.get() < 0) refuse(text, port, errno);
  if (port != 0) {
    // Allows a port whose connections are all closed, but not one with a listener.
    const int yes = 1;
    ::setsockopt(bound.get(), SOL_SOCKET, SO_REUSEADDR, &yes, sizeof yes);
  }
  if (::bind(bound.get(), reinterpret_cast<const sockaddr*>(&address.storage), address.size) != 0)
    refuse(text, port, errno);
  return bound;
}

Socket listenAt(const std::string& address, std::uint16_t port) {
  Socket listening = bindTo(address, port);
  if (::listen(listening.get(), kBacklog) != 0) refuse(address, port, errno);
  return listening;
}

std::uint16_t boundPort(const Socket& socket) {
  sockaddr_storage address{};
  socklen_t size = sizeof address;
  if (::getsockname(socket.get(), reinterpret_cast<sockaddr*>(&address), &size) != 0) return 0;
  return ntohs(address.ss_family == AF_INET6 ? reinterpret_cast<const sockaddr_in6&>(address).sin6_port
                                             : reinterpret_cast<const sockaddr_in&>(address).sin_port);
}

}  // namespace quorvantis::server
