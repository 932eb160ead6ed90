#include "server/listener.h"

#include <netinet/in.h>
#include <netinet/tcp.h>
#include <openssl/err.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <cerrno>
#include <climits>
#include <csignal>
#include <list>
#include <system_error>
#include <thread>

#include "base/descriptors.h"
#include "server/openssl_handles.h"
#include "server/server_error.h"
#include "server/socket.h"

namespace quorvantis::server {
namespace {

using Clock = std::chrono::steady_clock;
using std::chrono::milliseconds;

constexpr auto kGrace = milliseconds(200);  // to finish sending when the listener stops
constexpr auto kPauseWithoutResources = milliseconds(50);

enum class Ready { yes, stopped, late };

int remaining(Clock::time_point deadline) {
  const auto left = std::chrono::ceil<milliseconds>(deadline - Clock::now()).count();
  return static_cast<int>(std::clamp<std::int64_t>(left, 0, INT_MAX));
}

Ready waitFor(int socket, short events, int stop, Clock::time_point deadline) {
  for (;;) {
    std::array<pollfd, 2> watched{{{socket, events, 0}, {stop, POLLIN, 0}}};
    const int count = ::poll(watched.data(), watched.size(), remaining(deadline));
    if (count > 0) return watched[1].revents != 0 ? Ready::stopped : Ready::yes;
    if (count == 0) return Ready::late;
    if (errno != EINTR) return Ready::late;
  }
}

Clock::time_point after(milliseconds patience) {
  return Clock::now() + std::min(patience, milliseconds(INT_MAX));
}

openssl::Bio memory(const std::string& text) {
  return openssl::Bio(BIO_new_mem_buf(text.data(), static_cast<int>(text.size())));
}

openssl::Certificate readCertificate(const std::string& pem) {
  return openssl::Certificate(PEM_read_bio_X509(memory(pem).get(), nullptr, nullptr, nullptr));
}

/// A client that offers only other protocols would not understand the answer.
int chooseProtocol(SSL*, const unsigned char** chosen, unsigned char* size, const unsigned char* offered,
                   unsigned offeredSize, void* wanted) {
  const std::string& name = *static_cast<const std::string*>(wanted);
  for (unsigned i = 0; i < offeredSize; i += 1U + offered[i]) {
    const std::string_view one(reinterpret_cast<const char*>(offered + i + 1), offered[i]);
    if (one != name) continue;
    *chosen = offered + i + 1;
    *size = offered[i];
    return SSL_TLSEXT_ERR_OK;
  }
  return SSL_TLSEXT_ERR_ALERT_FATAL;
}

/// The owner judges the client's certificate, not the handshake.
void askForCertificate(SSL_CTX* context, const std::string& authority) {
  const openssl::Certificate certificate = readCertificate(authority);
  if (!certificate || X509_STORE_add_cert(SSL_CTX_get_cert_store(context), certificate.get()) != 1 ||
      SSL_CTX_add_client_CA(context, certificate.get()) != 1) {
    throw ServerError("the authority for clients must be a certificate in PEM form");
  }
  static constexpr std::string_view kSessions = "clients";  // sessions are not resumed elsewhere
  SSL_CTX_set_session_id_context(context, reinterpret_cast<const unsigned char*>(kSessions.data()),
                                 kSessions.size());
  SSL_CTX_set_verify(context, SSL_VERIFY_PEER, [](int, X509_STORE_CTX*) { return 1; });
}

/// Null for plain connections.
openssl::Context makeContext(const ListenerOptions& options) {
  if (options.identity.certificate.empty()) return {};
  const openssl::Certificate certificate = readCertificate(options.identity.certificate);
  const openssl::Key key(
      PEM_read_bio_PrivateKey(memory(options.identity.privateKey).get(), nullptr, nullptr, nullptr));
  openssl::Context context(SSL_CTX_new(TLS_server_method()));
  if (context && options.takesWeakKeys) SSL_CTX_set_security_level(context.get(), 0);
  if (!certificate || !key || !context || SSL_CTX_use_certificate(context.get(), certificate.get()) != 1 ||
      SSL_CTX_use_PrivateKey(context.get(), key.get()) != 1) {
    throw ServerError("the server's certificate can't be used");
  }
  const bool old = options.highestTlsVersion != 0 && options.highestTlsVersion < TLS1_2_VERSION;
  if (old) {
    SSL_CTX_set_cipher_list(context.get(), "DEFAULT@SECLEVEL=0");
  }
  SSL_CTX_set_min_proto_version(context.get(), old ? options.highestTlsVersion : TLS1_2_VERSION);
  SSL_CTX_set_max_proto_version(context.get(), options.highestTlsVersion);
  SSL_CTX_set_options(context.get(), SSL_OP_NO_RENEGOTIATION);
  SSL_CTX_set_mode(context.get(), SSL_MODE_ENABLE_PARTIAL_WRITE | SSL_MODE_ACCEPT_MOVING_WRITE_BUFFER);
  if (!options.protocol.empty())
    SSL_CTX_set_alpn_select_cb(context.get(), chooseProtocol, const_cast<std::string*>(&options.protocol));
  if (!options.clientAuthority.empty()) askForCertificate(context.get(), options.clientAuthority);
  return context;
}

/// Threads created while this exists get no signals: those are for the program's own threads, and a broken
/// pipe must not end it.
class SignalsBlocked {
 public:
  SignalsBlocked() {
    sigset_t all;
    sigfillset(&all);
    pthread_sigmask(SIG_BLOCK, &all, &before_);
  }
  ~SignalsBlocked() { pthread_sigmask(SIG_SETMASK, &before_, nullptr); }
  SignalsBlocked(const SignalsBlocked&) = delete;
  SignalsBlocked& operator=(const SignalsBlocked&) = delete;

 private:
  sigset_t before_;
};

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
  if (socket_ < 0) return;
  const linger atOnce{1, 0};
  ::setsockopt(socket_, SOL_SOCKET, SO_LINGER, &atOnce, sizeof atOnce);
  ::close(socket_);
  socket_ = -1;
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

struct Listener::State {
  struct Worker {
    std::thread thread;
    std::atomic<bool> done = false;
  };

  explicit State(ListenerOptions given)
      : options(std::move(given)),
        context(makeContext(options)),
        listening(listenAt(options.address, options.port)),
        stop(openPipe()) {
    const SignalsBlocked blocked;
    accepting = std::thread([this] { accept(); });
  }

  ~State() {
    // Writes a byte that nobody reads: closing the end would go unnoticed while a helper process has a copy
    // of it.
    const char byte = 0;
    while (::write(stop.in.get(), &byte, sizeof byte) < 0 && errno == EINTR) {
    }
    accepting.join();
    for (Worker& worker : workers) worker.thread.join();
  }

  State(const State&) = delete;
  State& operator=(const State&) = delete;

  void accept() {
    for (;;) {
      const Ready ready =
          waitFor(listening.get(), POLLIN, stop.out.get(), Clock::now() + std::chrono::hours(1));
      if (ready == Ready::stopped) return;
      workers.remove_if([](Worker& worker) {
        if (worker.done) worker.thread.join();
        return worker.done.load();
      });
      const int client = base::acceptConnection(listening.get());
      if (client >= 0) {
        start(client);
      } else if (errno != EAGAIN && errno != EINTR && errno != ECONNABORTED) {
        waitFor(-1, 0, stop.out.get(), Clock::now() + kPauseWithoutResources);
      }
    }
  }

  void start(int client) {
    if (workers.size() >= options.mostConnections) {
      ::close(client);
      return;
    }
    const int yes = 1;
    ::setsockopt(client, IPPROTO_TCP, TCP_NODELAY, &yes, sizeof yes);
    Worker& worker = workers.emplace_back();
    try {
      worker.thread = std::thread([this, client, &worker] {
        run(client);
        worker.done = true;
      });
    } catch (const std::system_error&) {
      workers.pop_back();
      ::close(client);
    }
  }

  void run(int client) const {
    try {
      Connection connection(client, context.get(), stop.out.get());
      options.serve(connection);
    } catch (...) {
      // Only this connection is lost.
    }
  }

  const ListenerOptions options;
  const openssl::Context context;
  const Socket listening;
  const Pipe stop;            // readable when everything must stop
  std::list<Worker> workers;  // used only by the accepting thread, while it runs
  std::thread accepting;
};

Listener::Listener(ListenerOptions options) : state_(std::make_unique<State>(std::move(options))) {}
Listener::~Listener() = default;

std::uint16_t Listener::port() const {
  return boundPort(state_->listening);
}

}  // namespace quorvantis::server
