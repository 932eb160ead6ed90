#include "server/connection.h"

#include <openssl/err.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <climits>

#include "base/descriptors.h"
#include "server/openssl_handles.h"
#include "server/readiness.h"

namespace quorvantis::server {
namespace {

using std::chrono::milliseconds;
using Clock = Connection::Clock;

constexpr auto kGrace = milliseconds(200);  // to finish sending when the listener stops

Clock::time_point after(milliseconds patience) {
  return Clock::now() + std::min(patience, milliseconds(INT_MAX));
}

}  // namespace

/// The connection's transport: TLS over the socket, or the socket itself.
struct Connection::Channel {
  openssl::Ssl ssl;  // null: plain
  int socket;
  bool failed = false;

  int read(char* into, std::size_t size) const {
    const int most = static_cast<int>(std::min<std::size_t>(size, INT_MAX));
    if (ssl) return SSL_read(ssl.get(), into, most);
    return static_cast<int>(::recv(socket, into, static_cast<std::size_t>(most), 0));
  }
  int write(std::string_view bytes) const {
    const int most = static_cast<int>(std::min<std::size_t>(bytes.size(), INT_MAX));
    if (ssl) return SSL_write(ssl.get(), bytes.data(), most);
    return static_cast<int>(base::sendTo(socket, bytes.data(), static_cast<std::size_t>(most)));
  }

  /// Calls `step` until it succeeds (its result is positive), the other side has ended (0), it fails for good
  /// or time is over. `plainly` is what a plain step waits for.
  template <class Step, class Wait>
  int drive(Step step, short plainly, Wait wait) {
    for (;;) {
      ERR_clear_error();
      const int result = step();
      if (result > 0) return result;
      const int error = ssl ? SSL_get_error(ssl.get(), result) : plainError(result, plainly);
      if (error == SSL_ERROR_ZERO_RETURN) return 0;
      const bool again = error == SSL_ERROR_WANT_READ || error == SSL_ERROR_WANT_WRITE;
      if (!again) failed = true;
      if (!again || !wait(error == SSL_ERROR_WANT_READ ? short{POLLIN} : short{POLLOUT})) return -1;
    }
  }

 private:
  /// errno in OpenSSL's words.
  static int plainError(int result, short plainly) {
    if (result == 0) return SSL_ERROR_ZERO_RETURN;
    if (errno != EAGAIN && errno != EWOULDBLOCK && errno != EINTR) return SSL_ERROR_SYSCALL;
    return plainly == POLLIN ? SSL_ERROR_WANT_READ : SSL_ERROR_WANT_WRITE;
  }
};

Connection::Connection(int socket, void* context, int stop)
    : channel_(std::make_unique<Channel>(Channel{.ssl = {}, .socket = socket})),
      socket_(socket),
      stop_(stop) {
  if (context == nullptr) return;
  channel_->ssl.reset(SSL_new(static_cast<SSL_CTX*>(context)));
  channel_->failed = !channel_->ssl || SSL_set_fd(channel_->ssl.get(), socket) != 1;
}

Connection::~Connection() {
  if (socket_ >= 0) ::close(socket_);
}

bool Connection::handshake(milliseconds patience) {
  if (channel_->failed) return false;
  if (!channel_->ssl) return true;
  const auto deadline = after(patience);
  return channel_->drive(
             [this] { return SSL_accept(channel_->ssl.get()); }, POLLIN,
             [&](short events) { return waitFor(socket_, events, stop_, deadline) == Ready::yes; }) > 0;
}

bool Connection::readable(milliseconds patience) {
  if (channel_->failed || socket_ < 0) return false;
  return (channel_->ssl && SSL_pending(channel_->ssl.get()) > 0) ||
         waitFor(socket_, POLLIN, stop_, after(patience)) == Ready::yes;
}

std::ptrdiff_t Connection::read(char* into, std::size_t size, milliseconds patience) {
  if (channel_->failed || socket_ < 0) return -1;
  const auto deadline = after(patience);
  return channel_->drive(
      [&] { return channel_->read(into, size); }, POLLIN,
      [&](short events) { return waitFor(socket_, events, stop_, deadline) == Ready::yes; });
}

bool Connection::write(std::string_view bytes, milliseconds patience) {
  auto deadline = after(patience);
  int stop = stop_;
  const auto wait = [&](short events) {
    Ready ready = waitFor(socket_, events, stop, deadline);
    if (ready == Ready::stopped) {
      stop = -1;  // poll ignores it
      deadline = std::min(deadline, after(kGrace));
      ready = waitFor(socket_, events, stop, deadline);
    }
    return ready == Ready::yes;
  };
  while (!bytes.empty()) {
    if (channel_->failed || socket_ < 0) return false;
    const int sent = channel_->drive([&] { return channel_->write(bytes); }, POLLOUT, wait);
    if (sent <= 0) return false;
    bytes.remove_prefix(static_cast<std::size_t>(sent));
    if (stop < 0 && Clock::now() >= deadline) return false;
  }
  return true;
}

void Connection::finish() {
  if (channel_->failed || socket_ < 0) return;
  ERR_clear_error();
  if (channel_->ssl) {
    SSL_shutdown(channel_->ssl.get());
  } else {
    ::shutdown(socket_, SHUT_WR);
  }
}

void Connection::cut() {
  if (socket_ < 0 || !endWaiting()) return;
  const linger atOnce{1, 0};
  ::setsockopt(socket_, SOL_SOCKET, SO_LINGER, &atOnce, sizeof atOnce);
  ::close(socket_);
  socket_ = -1;
}

void Connection::beginWaiting() {
  const std::lock_guard lock(placeMutex_);
  if (!hasLostPlace_) waitingSince_ = Clock::now();
}

bool Connection::endWaiting() {
  const std::lock_guard lock(placeMutex_);
  waitingSince_.reset();
  return !hasLostPlace_;
}

std::optional<Clock::time_point> Connection::waitingSince() const {
  const std::lock_guard lock(placeMutex_);
  return waitingSince_;
}

bool Connection::giveUpPlace() {
  const std::lock_guard lock(placeMutex_);
  if (!waitingSince_) return false;
  waitingSince_.reset();
  hasLostPlace_ = true;
  ::shutdown(socket_, SHUT_RDWR);  // wakes its thread
  return true;
}

std::optional<PeerCertificate> Connection::peer() const {
  X509* const certificate = channel_->ssl ? SSL_get0_peer_certificate(channel_->ssl.get()) : nullptr;
  if (certificate == nullptr) return std::nullopt;
  PeerCertificate peer;
  peer.isTrusted = SSL_get_verify_result(channel_->ssl.get()) == X509_V_OK;
  X509_NAME* const subject = X509_get_subject_name(certificate);
  const int place = X509_NAME_get_index_by_NID(subject, NID_userId, -1);
  if (place < 0) return peer;
  const ASN1_STRING* const userId = X509_NAME_ENTRY_get_data(X509_NAME_get_entry(subject, place));
  peer.userId.assign(reinterpret_cast<const char*>(ASN1_STRING_get0_data(userId)),
                     static_cast<std::size_t>(ASN1_STRING_length(userId)));
  return peer;
}

bool Connection::stopping() const {
  pollfd watched{stop_, POLLIN, 0};
  return ::poll(&watched, 1, 0) > 0;
}

}  // namespace quorvantis::server
