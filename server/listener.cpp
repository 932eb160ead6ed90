#include "server/listener.h"

#include <netinet/in.h>
#include <netinet/tcp.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

#include <algorithm>
#include <atomic>
#include <cerrno>
#include <csignal>
#include <list>
#include <mutex>
#include <optional>
#include <system_error>
#include <thread>

#include "base/descriptors.h"
#include "server/readiness.h"
#include "server/server_error.h"
#include "server/tls_context.h"

namespace quorvantis::server {
namespace {

using Clock = Connection::Clock;

constexpr auto kPauseWithoutResources = std::chrono::milliseconds(50);

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

struct Listener::State {
  /// A connection's thread, and the place that it takes.
  struct Worker {
    std::thread thread;
    std::atomic<bool> done = false;
    bool hasPlace = true;  // used only by the accepting thread

    /// Lets the accepting thread reach the connection while it is served.
    class Serving {
     public:
      Serving(Worker& worker, Connection& connection) : worker_(worker) { set(&connection); }
      ~Serving() { set(nullptr); }
      Serving(const Serving&) = delete;
      Serving& operator=(const Serving&) = delete;

     private:
      void set(Connection* connection) {
        const std::lock_guard lock(worker_.mutex_);
        worker_.connection_ = connection;
      }
      Worker& worker_;
    };

    std::optional<Clock::time_point> waitingSince() {
      const std::lock_guard lock(mutex_);
      return connection_ == nullptr ? std::nullopt : connection_->waitingSince();
    }
    bool giveUpPlace() {
      const std::lock_guard lock(mutex_);
      if (connection_ != nullptr && connection_->giveUpPlace()) hasPlace = false;
      return !hasPlace;
    }

   private:
    std::mutex mutex_;
    Connection* connection_ = nullptr;
  };

  explicit State(ListenerOptions given)
      : options(std::move(given)),
        context(makeContext(options.tls)),
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
        if (!worker.done) return false;
        worker.thread.join();
        return true;
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
    if (!findPlace()) {
      ::close(client);
      return;
    }
    const int yes = 1;
    ::setsockopt(client, IPPROTO_TCP, TCP_NODELAY, &yes, sizeof yes);
    Worker& worker = workers.emplace_back();
    try {
      worker.thread = std::thread([this, client, &worker] {
        run(client, worker);
        worker.done = true;
      });
    } catch (const std::system_error&) {
      workers.pop_back();
      ::close(client);
    }
  }

  /// Whether a place is free, if need be that of the connection that has been waiting for longest.
  bool findPlace() {
    const auto taken =
        std::count_if(workers.begin(), workers.end(), [](const Worker& worker) { return worker.hasPlace; });
    if (static_cast<std::size_t>(taken) < options.mostConnections) return true;
    auto begun = Clock::now() - options.patience;
    Worker* longest = nullptr;
    for (Worker& worker : workers) {
      const auto since = worker.waitingSince();
      if (!since || *since > begun) continue;
      begun = *since;
      longest = &worker;
    }
    return longest != nullptr && longest->giveUpPlace();
  }

  void run(int client, Worker& worker) const {
    try {
      Connection connection(client, context.get(), stop.out.get());
      const Worker::Serving serving(worker, connection);
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
