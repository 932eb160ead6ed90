#include "server/tls_listener.h"

#include <fcntl.h>
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <openssl/err.h>
#include <poll.h>
#include <sys/eventfd.h>
#include <sys/socket.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <cerrno>
#include <climits>
#include <csignal>
#include <cstring>
#include <list>
#include <system_error>
#include <thread>

#include "server/openssl_handles.h"
#include "server/server_error.h"
#include "server/socket.h"

namespace quorvantis::server {
namespace {

using Clock = std::chrono::steady_clock;
using std::chrono::milliseconds;

constexpr std::size_t kMostConnections = 64;
constexpr auto kGrace = milliseconds(200);  // for what is being sent when the listener stops
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

openssl::Context makeContext(const Identity& identity, int highestTlsVersion, bool takesWeakKeys) {
  const auto memory = [](const std::string& text) {
    return openssl::Bio(BIO_new_mem_buf(text.data(), static_cast<int>(text.size())));
  };
  const openssl::Certificate certificate(
      PEM_read_bio_X509(memory(identity.certificate).get(), nullptr, nullptr, nullptr));
  const openssl::Key key(
      PEM_read_bio_PrivateKey(memory(identity.privateKey).get(), nullptr, nullptr, nullptr));
  openssl::Context context(SSL_CTX_new(TLS_server_method()));
  if (context && takesWeakKeys) SSL_CTX_set_security_level(context.get(), 0);
  if (!certificate || !key || !context || SSL_CTX_use_certificate(context.get(), certificate.get()) != 1 ||
      SSL_CTX_use_PrivateKey(context.get(), key.get()) != 1) {
    throw ServerError("the server's certificate can't be used");
  }
  const bool old = highestTlsVersion != 0 && highestTlsVersion < TLS1_2_VERSION;
  if (old) {
    SSL_CTX_set_cipher_list(context.get(), "DEFAULT@SECLEVEL=0");
  }
  SSL_CTX_set_min_proto_version(context.get(), old ? highestTlsVersion : TLS1_2_VERSION);
  SSL_CTX_set_max_proto_version(context.get(), highestTlsVersion);
  SSL_CTX_set_options(context.get(), SSL_OP_NO_RENEGOTIATION);
  SSL_CTX_set_mode(context.get(), SSL_MODE_ENABLE_PARTIAL_WRITE | SSL_MODE_ACCEPT_MOVING_WRITE_BUFFER);
  return context;
}

/// Threads made while this lives get no signals: those are the program's own, and one for a broken pipe is no
/// reason to end it.
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

struct TlsConnection::Tls {
  openssl::Ssl ssl;
  bool failed = false;

  /// Calls `step` until it succeeds (its result is positive), fails for good or time is over.
  template <class Step, class Wait>
  int drive(Step step, Wait wait) {
    for (;;) {
      ERR_clear_error();
      const int result = step();
      if (result > 0) return result;
      const int error = SSL_get_error(ssl.get(), result);
      if (error == SSL_ERROR_ZERO_RETURN) return 0;
      const bool again = error == SSL_ERROR_WANT_READ || error == SSL_ERROR_WANT_WRITE;
      if (!again) failed = true;
      if (!again || !wait(error == SSL_ERROR_WANT_READ ? short{POLLIN} : short{POLLOUT})) return -1;
    }
  }
};

TlsConnection::TlsConnection(int socket, void* context, int stop)
    : tls_(std::make_unique<Tls>()), socket_(socket), stop_(stop) {
  tls_->ssl.reset(SSL_new(static_cast<SSL_CTX*>(context)));
  tls_->failed = !tls_->ssl || SSL_set_fd(tls_->ssl.get(), socket) != 1;
}

TlsConnection::~TlsConnection() {
  if (socket_ >= 0) ::close(socket_);
}

bool TlsConnection::handshake(milliseconds patience) {
  if (tls_->failed) return false;
  const auto deadline = after(patience);
  return tls_->drive([this] { return SSL_accept(tls_->ssl.get()); },
                     [&](short events) { return waitFor(socket_, events, stop_, deadline) == Ready::yes; }) >
         0;
}

bool TlsConnection::readable(milliseconds patience) {
  if (tls_->failed || socket_ < 0) return false;
  return SSL_pending(tls_->ssl.get()) > 0 || waitFor(socket_, POLLIN, stop_, after(patience)) == Ready::yes;
}

std::ptrdiff_t TlsConnection::read(char* into, std::size_t size, milliseconds patience) {
  if (tls_->failed || socket_ < 0) return -1;
  const auto deadline = after(patience);
  const int most = static_cast<int>(std::min<std::size_t>(size, INT_MAX));
  return tls_->drive([&] { return SSL_read(tls_->ssl.get(), into, most); },
                     [&](short events) { return waitFor(socket_, events, stop_, deadline) == Ready::yes; });
}

bool TlsConnection::write(std::string_view bytes, milliseconds patience) {
  auto deadline = after(patience);
  int stop = stop_;
  const auto wait = [&](short events) {
    Ready ready = waitFor(socket_, events, stop, deadline);
    if (ready == Ready::stopped) {
      stop = -1;  // poll passes over it
      deadline = std::min(deadline, after(kGrace));
      ready = waitFor(socket_, events, stop, deadline);
    }
    return ready == Ready::yes;
  };
  while (!bytes.empty()) {
    if (tls_->failed || socket_ < 0) return false;
    const int most = static_cast<int>(std::min<std::size_t>(bytes.size(), INT_MAX));
    const int sent = tls_->drive([&] { return SSL_write(tls_->ssl.get(), bytes.data(), most); }, wait);
    if (sent <= 0) return false;
    bytes.remove_prefix(static_cast<std::size_t>(sent));
    if (stop < 0 && Clock::now() >= deadline) return false;
  }
  return true;
}

void TlsConnection::goodBye() {
  if (tls_->failed || socket_ < 0) return;
  ERR_clear_error();
  SSL_shutdown(tls_->ssl.get());
}

void TlsConnection::cut() {
  if (socket_ < 0) return;
  const linger atOnce{1, 0};
  ::setsockopt(socket_, SOL_SOCKET, SO_LINGER, &atOnce, sizeof atOnce);
  ::close(socket_);
  socket_ = -1;
}

bool TlsConnection::stopping() const {
  pollfd watched{stop_, POLLIN, 0};
  return ::poll(&watched, 1, 0) > 0;
}

struct TlsListener::State {
  struct Worker {
    std::thread thread;
    std::atomic<bool> done = false;
  };

  explicit State(TlsListenerOptions given)
      : options(std::move(given)),
        context(makeContext(options.identity, options.highestTlsVersion, options.takesWeakKeys)),
        listening(listenOnLoopback(options.port)),
        stop(::eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK)) {
    if (stop.get() < 0) throw ServerError(std::string("no event descriptor: ") + std::strerror(errno));
    const SignalsBlocked blocked;
    accepting = std::thread([this] { accept(); });
  }

  ~State() {
    const std::uint64_t one = 1;
    while (::write(stop.get(), &one, sizeof one) < 0 && errno == EINTR) {
    }
    accepting.join();
    for (Worker& worker : workers) worker.thread.join();
  }

  State(const State&) = delete;
  State& operator=(const State&) = delete;

  void accept() {
    for (;;) {
      const Ready ready = waitFor(listening.get(), POLLIN, stop.get(), Clock::now() + std::chrono::hours(1));
      if (ready == Ready::stopped) return;
      workers.remove_if([](Worker& worker) {
        if (worker.done) worker.thread.join();
        return worker.done.load();
      });
      const int client = ::accept4(listening.get(), nullptr, nullptr, SOCK_CLOEXEC | SOCK_NONBLOCK);
      if (client >= 0) {
        start(client);
      } else if (errno != EAGAIN && errno != EINTR && errno != ECONNABORTED) {
        waitFor(-1, 0, stop.get(), Clock::now() + kPauseWithoutResources);
      }
    }
  }

  void start(int client) {
    if (workers.size() >= kMostConnections) {
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
      TlsConnection connection(client, context.get(), stop.get());
      options.serve(connection);
    } catch (...) {
      // The connection is lost, the server goes on.
    }
  }

  const TlsListenerOptions options;
  const openssl::Context context;
  const Socket listening;
  const Socket stop;
  std::list<Worker> workers;  // of the accepting thread, while it lives
  std::thread accepting;
};

TlsListener::TlsListener(TlsListenerOptions options) : state_(std::make_unique<State>(std::move(options))) {}
TlsListener::~TlsListener() = default;

std::uint16_t TlsListener::port() const {
  return boundPort(state_->listening);
}

}  // namespace quorvantis::server
