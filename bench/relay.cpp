#include "bench/relay.h"

#include <arpa/inet.h>
#include <netinet/tcp.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <system_error>

namespace quorvantis::bench {

namespace {

sockaddr_in loopback(std::uint16_t port) {
  sockaddr_in address{};
  address.sin_family = AF_INET;
  address.sin_port = htons(port);
  address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
  return address;
}

int check(int result, const char* what) {
  if (result < 0) throw std::system_error(errno, std::generic_category(), what);
  return result;
}

void sendAtOnce(int socket) {
  const int on = 1;
  ::setsockopt(socket, IPPROTO_TCP, TCP_NODELAY, &on, sizeof on);
}

bool sendAll(int socket, const char* data, std::size_t size) {
  while (size > 0) {
    const ssize_t sent = ::send(socket, data, size, MSG_NOSIGNAL);
    if (sent <= 0) return false;
    data += sent;
    size -= static_cast<std::size_t>(sent);
  }
  return true;
}

}  // namespace

Relay::Relay(std::uint16_t serverPort) : serverPort_(serverPort) {
  check(::pipe(stop_), "pipe");
  listener_ = check(::socket(AF_INET, SOCK_STREAM, 0), "socket");
  sockaddr_in address = loopback(0);
  socklen_t size = sizeof address;
  check(::bind(listener_, reinterpret_cast<const sockaddr*>(&address), size), "bind");
  check(::listen(listener_, 16), "listen");
  check(::getsockname(listener_, reinterpret_cast<sockaddr*>(&address), &size), "getsockname");
  port_ = ntohs(address.sin_port);
  accepting_ = std::thread([this] { accept(); });
}

Relay::~Relay() {
  ::close(stop_[1]);  // wakes every thread
  accepting_.join();
  for (std::thread& thread : passing_) thread.join();
  ::close(listener_);
  ::close(stop_[0]);
}

Traffic Relay::take() {
  return {connections_.exchange(0), turns_.exchange(0), up_.exchange(0), down_.exchange(0)};
}

void Relay::accept() {
  while (true) {
    std::array<pollfd, 2> watched{{{listener_, POLLIN, 0}, {stop_[0], POLLIN, 0}}};
    ::poll(watched.data(), watched.size(), -1);
    if (watched[1].revents != 0) return;
    const int client = ::accept(listener_, nullptr, nullptr);
    if (client < 0) continue;
    ++connections_;
    passing_.emplace_back([this, client] { pass(client); });
  }
}

void Relay::pass(int client) {
  const int server = ::socket(AF_INET, SOCK_STREAM, 0);
  const sockaddr_in address = loopback(serverPort_);
  bool alive = ::connect(server, reinterpret_cast<const sockaddr*>(&address), sizeof address) == 0;
  sendAtOnce(client);
  sendAtOnce(server);
  bool clientSpokeLast = false;
  std::array<char, 16384> buffer;
  while (alive) {
    std::array<pollfd, 3> watched{{{client, POLLIN, 0}, {server, POLLIN, 0}, {stop_[0], POLLIN, 0}}};
    ::poll(watched.data(), watched.size(), -1);
    if (watched[2].revents != 0) break;
    const bool fromClient = watched[0].revents != 0;
    const ssize_t got = ::recv(fromClient ? client : server, buffer.data(), buffer.size(), 0);
    if (got <= 0) break;
    const auto size = static_cast<std::size_t>(got);
    if (fromClient && !clientSpokeLast) ++turns_;
    clientSpokeLast = fromClient;
    (fromClient ? up_ : down_) += size;
    alive = sendAll(fromClient ? server : client, buffer.data(), size);
  }
  ::close(client);
  ::close(server);
}

}  // namespace quorvantis::bench
