#include "server/misbehaving_server.h"

#include <sys/socket.h>

#include <array>
#include <chrono>
#include <mutex>
#include <optional>
#include <string_view>
#include <utility>

#include "base/ascii.h"
#include "base/descriptors.h"
#include "server/listener.h"

namespace quorvantis::server {
namespace {

using std::chrono::milliseconds;

constexpr auto kForever = std::chrono::hours(24);
constexpr auto kTrickle = milliseconds(1000);
constexpr std::size_t kMostRequestBytes = std::size_t{16} * 1024 * 1024;

struct RawRequest {
  std::string head;
  std::string body;
};

/// The header's value, 0 without it.
std::size_t contentLength(std::string head) {
  constexpr std::string_view kName = "\r\ncontent-length:";
  head = base::lowerCase(std::move(head));
  std::size_t at = head.find(kName);
  if (at == std::string::npos) return 0;
  at = head.find_first_not_of(' ', at + kName.size());
  std::size_t length = 0;
  while (at < head.size() && head[at] >= '0' && head[at] <= '9' && length <= kMostRequestBytes) {
    length = length * 10 + static_cast<std::size_t>(head[at++] - '0');
  }
  return length;
}

/// The next request on the connection; `buffered` holds what was read beyond the previous one.
std::optional<RawRequest> readRequest(Connection& connection, std::string& buffered) {
  constexpr std::string_view kEnd = "\r\n\r\n";
  std::optional<std::size_t> whole;
  std::size_t headSize = 0;
  std::array<char, 16384> chunk;
  for (;;) {
    if (const auto end = buffered.find(kEnd); !whole && end != std::string::npos) {
      headSize = end + kEnd.size();
      whole = headSize + contentLength(buffered.substr(0, headSize));
    }
    if (whole && buffered.size() >= *whole) break;
    if (buffered.size() > kMostRequestBytes) return std::nullopt;
    const auto count = connection.read(chunk.data(), chunk.size(), buffered.empty() ? kForever : kPatience);
    if (count <= 0) return std::nullopt;
    buffered.append(chunk.data(), static_cast<std::size_t>(count));
  }
  RawRequest request{buffered.substr(0, headSize), buffered.substr(headSize, *whole - headSize)};
  buffered.erase(0, *whole);
  return request;
}

/// Reads and ignores everything on the socket, without TLS.
void waitUntilClientLeaves(Connection& connection) {
  std::array<char, 1024> ignored;
  while (connection.readable(kForever) &&
         ::recv(connection.socket(), ignored.data(), ignored.size(), 0) > 0) {
  }
}

bool trickle(Connection& connection, std::string_view bytes) {
  for (const char byte : bytes) {
    if (!connection.write({&byte, 1}, kPatience)) return false;
    if (connection.readable(kTrickle) || connection.stopping()) return false;
  }
  return true;
}

bool repeat(Connection& connection, std::string_view bytes) {
  while (!bytes.empty() && !connection.stopping()) {
    if (!connection.write(bytes, kForever)) break;
  }
  return false;
}

/// Returns whether the connection is kept.
bool play(Connection& connection, const Misbehaviour& behaviour) {
  using Kind = Misbehaviour::Kind;
  if (behaviour.kind == Kind::trickle) return trickle(connection, behaviour.bytes);
  if (behaviour.kind == Kind::endless) return repeat(connection, behaviour.bytes);
  const bool sent = connection.write(behaviour.bytes, kPatience);
  if (behaviour.kind == Kind::close) connection.finish();
  if (behaviour.kind == Kind::cut) connection.cut();
  if (behaviour.kind == Kind::silence) waitUntilClientLeaves(connection);
  return sent && behaviour.kind == Kind::answer;
}

}  // namespace

struct MisbehavingServer::State {
  explicit State(MisbehavingServerOptions given)
      : options(std::move(given)),
        listener({.port = 0,
                  .tls = {.identity = options.identity,
                          .highestVersion = options.highestTlsVersion,
                          .takesWeakKeys = true},
                  .serve = [this](Connection& connection) { serve(connection); }}) {}

  void serve(Connection& connection);
  /// Whether the connection comes as far as its first request.
  bool begin(Connection& connection) const;
  Misbehaviour receive(const RawRequest& request);

  MisbehavingServerOptions options;
  std::mutex mutex;  // one request at a time; guards the script
  Listener listener;
};

void MisbehavingServer::State::serve(Connection& connection) {
  if (!begin(connection)) {
    if (options.silent) return waitUntilClientLeaves(connection);
    return connection.cut();
  }
  std::string buffered;
  while (const auto request = readRequest(connection, buffered)) {
    if (!play(connection, receive(*request))) return;
  }
}

bool MisbehavingServer::State::begin(Connection& connection) const {
  if (!options.plain.empty()) {
    base::sendTo(connection.socket(), options.plain.data(), options.plain.size());
    waitUntilClientLeaves(connection);
    return false;
  }
  if (options.reached == Stage::accepted) return false;
  if (options.reached == Stage::greeted && connection.readable(kPatience)) return false;
  if (!connection.handshake(kPatience) || options.reached == Stage::secured) return false;
  if (options.reached == Stage::request) return true;
  char first = 0;
  connection.read(&first, 1, kPatience);
  return false;
}

Misbehaviour MisbehavingServer::State::receive(const RawRequest& request) {
  const std::lock_guard lock(mutex);
  if (options.onRequest) options.onRequest(request.head, request.body);
  if (options.script.empty()) return {};
  Misbehaviour next = options.script.front();
  if (options.script.size() > 1) options.script.pop_front();
  return next;
}

MisbehavingServer::MisbehavingServer(MisbehavingServerOptions options)
    : state_(std::make_unique<State>(std::move(options))) {}
MisbehavingServer::~MisbehavingServer() = default;

std::uint16_t MisbehavingServer::port() const {
  return state_->listener.port();
}

}  // namespace quorvantis::server
