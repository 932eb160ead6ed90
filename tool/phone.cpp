#include "tool/phone.h"

#include <arpa/inet.h>

#include <csignal>
#include <fstream>
#include <functional>
#include <future>
#include <iostream>
#include <iterator>
#include <memory>
#include <mutex>
#include <stdexcept>
#include <thread>
#include <utility>

#include "apns/service.h"
#include "console/input.h"
#include "console/stop_signals.h"
#include "console/terminal.h"
#include "console/usage_error.h"
#include "console/wording.h"
#include "json/write.h"
#include "phone/http_service.h"
#include "phone/provider_side.h"
#include "report/text.h"
#include "scenario/names.h"
#include "server/authority_file.h"
#include "server/socket.h"
#include "tool/exit_status.h"
#include "tool/standard_streams.h"

namespace quorvantis::tool {

namespace {

std::string contentsOf(const std::string& path, const char* option) {
  std::ifstream file(path, std::ios::binary);
  std::string text{std::istreambuf_iterator<char>(file), {}};
  if (!file || text.empty()) {
    throw console::UsageError(std::string(option) + ": " + path + " can't be read or is empty");
  }
  return text;
}

std::shared_ptr<const jose::SigningKey> readProviderKey(const std::string& path) {
  const std::string pem = contentsOf(path, "--provider-key");
  try {
    return std::make_shared<const jose::SigningKey>(pem);
  } catch (const std::runtime_error& error) {
    throw console::UsageError("--provider-key: " + path + " is " + error.what() +
                              "; it must be the .p8 file, or its public half");
  }
}

bool isNumeric(const std::string& address) {
  in6_addr any{};
  return inet_pton(AF_INET, address.c_str(), &any) == 1 || inet_pton(AF_INET6, address.c_str(), &any) == 1;
}

void checkWhereToListen(const PhoneOptions& options) {
  if (!isNumeric(options.listen)) {
    throw console::UsageError("--listen must be a numeric address, such as 127.0.0.1 or ::, not \"" +
                              options.listen + '"');
  }
  if (server::isLoopback(options.listen)) return;
  if (options.publicHost.empty()) {
    throw console::UsageError(
        "--listen " + options.listen +
        " can be reached from other machines: give the host name in the address of the page with "
        "--public-host NAME, or leave out --listen");
  }
  std::cerr << "quorvantis-push: anyone who can reach " << options.listen
            << " and has the key can use this phone, and traffic is not encrypted\n";
}

std::vector<phone::Line> readScenario(const PhoneOptions& options) {
  if (options.scenario.empty()) return {};
  const console::Input input = console::readInput(options.scenario);
  if (!input.problem.empty()) {
    throw console::UsageError(console::nameOfInput(options.scenario) + ": can't be read: " + input.problem);
  }
  return phone::readLines(input.bytes, options.server.has_value());
}

phone::PhoneOptions phoneOptions(const PhoneOptions& options) {
  phone::PhoneOptions made{.build = options.build, .settings = options.settings, .version = options.version};
  if (options.server) made.server = scenario::outsideServer(*options.server, options.authority.value_or(""));
  return made;
}

/// Waits for a signal to stop on a thread of its own, and calls `stop` there, once.
class Stopper {
 public:
  /// The signals are blocked in all threads.
  Stopper(sigset_t signals, std::function<void()> stop)
      : thread_([signals, stop = std::move(stop)] {
          int signal = 0;
          sigwait(&signals, &signal);
          stop();
        }) {}
  ~Stopper() {
    wake();
    thread_.join();
  }
  Stopper(const Stopper&) = delete;
  Stopper& operator=(const Stopper&) = delete;

  /// As a signal from outside does, but never the second one, which ends the process at once.
  void wake() { pthread_kill(thread_.native_handle(), SIGINT); }

 private:
  std::thread thread_;
};

/// Messages to a person, one at a time: on standard error when a program reads standard output.
class Messages {
 public:
  explicit Messages(const PhoneOptions& options)
      : out_(options.json || !options.hasPage ? std::cerr : std::cout),
        terminal_(console::Terminal::ofStandardOutput()) {
    std::cerr.tie(nullptr);  // a stalled reader of standard output must not block messages
  }

  void printRequest(const apns::Report& report, const report::PayloadReport& payload) {
    const std::lock_guard lock(mutex_);
    out_ << report.status << ' ' << console::printable(report.status == 200 ? report.pushType : report.reason)
         << "  " << console::printable(report.id);
    if (!report.detail.empty()) out_ << "\n    " << console::printable(report.detail);
    out_ << '\n';
    if (!payload.findings.shown.empty()) report::print(payload, terminal_, out_);
    out_ << std::flush;
  }

  void print(const std::string& text) {
    const std::lock_guard lock(mutex_);
    out_ << text << std::flush;
  }

 private:
  std::ostream& out_;
  const console::Terminal terminal_;
  std::mutex mutex_;
};

/// What providers are known by; null or empty: the option was not given.
struct ProviderFiles {
  explicit ProviderFiles(const PhoneOptions& options) {
    if (!options.providerKey.empty()) key = readProviderKey(options.providerKey);
    if (!options.clientAuthority.empty())
      clientAuthority = contentsOf(options.clientAuthority, "--client-authority");
  }

  std::shared_ptr<const jose::SigningKey> key;
  std::string clientAuthority;
};

/// The stand-in for Apple's service, in front of the phone.
class Apple {
 public:
  Apple(const PhoneOptions& options, const ProviderFiles& files, phone::Phone& phone, phone::Worker& worker,
        Messages& messages)
      : options_(options), side_(phone, worker, [&messages](const auto& report, const auto& payload) {
          messages.printRequest(report, payload);
        }) {
    if (!options.apnsAuthority.empty()) server::requireOurs(options.apnsAuthority);
    apns::ServiceOptions made{.address = options.listen, .port = *options.apns, .rules = {options.topic}};
    made.rules.key = files.key;
    made.rules.keyId = options.providerKeyId;
    made.clientAuthority = files.clientAuthority;
    const auto authority = apns::makeAuthority();
    service_.emplace(authority, side_, std::move(made));
    if (!options.apnsAuthority.empty()) server::writeAuthority(options.apnsAuthority, authority);
  }

  [[nodiscard]] json::Dictionary facts() const {
    return {{"host", options_.listen},
            {"port", std::int64_t{service_->port()}},
            {"topic", options_.topic},
            {"checksSignature", !options_.providerKey.empty()},
            {"checksKeyId", !options_.providerKeyId.empty()}};
  }

  [[nodiscard]] std::string description(const std::string& token) const {
    const std::string where = options_.apnsAuthority.empty()
                                  ? "--apns-authority FILE writes its certificate"
                                  : "its certificate is in " + options_.apnsAuthority;
    return "The stand-in for Apple's push service is at https://localhost:" +
           std::to_string(service_->port()) + "\n    device token  " + token + "\n    topic         " +
           options_.topic + "\n    authority     " + where + "\n";
  }

  std::string orderFaults(const json::Value& order) {
    const auto faults = apns::readFaults(order);
    if (const auto* problem = std::get_if<std::string>(&faults)) return *problem;
    service_->faults().set(std::get<0>(faults));
    return {};
  }

  [[nodiscard]] bool acceptedErrors() const { return side_.acceptedErrors(); }

 private:
  const PhoneOptions& options_;
  phone::ProviderSide side_;
  std::optional<apns::Service> service_;
};

/// Prints the lines as they are added, until the transcript is over. False: some of them could not be
/// printed.
[[nodiscard]] bool printLines(const phone::Transcript& transcript, StandardStreams& streams) {
  std::string phone;
  std::size_t next = 1;
  for (;;) {
    const auto reading =
        transcript.wait(phone, next, std::chrono::steady_clock::now() + std::chrono::hours(1));
    if (reading.phone != phone) {
      phone = reading.phone;
      next = 1;
      continue;
    }
    std::string text;
    for (const phone::SharedText& line : reading.lines) text.append(*line).append("\n");
    if (!streams.write(text)) return false;
    next += reading.lines.size();
    if (reading.isOver && reading.lines.empty()) return true;
  }
}

/// Prints how to reach the phone: one line of JSON for a program, sentences for a person. False: nobody could
/// read it.
[[nodiscard]] bool announce(const PhoneOptions& options, const phone::HttpService& service,
                            const std::optional<Apple>& apple, const std::string& token, Messages& messages) {
  if (options.json || !options.hasPage) {
    json::Dictionary line{
        {"address", service.address()}, {"key", service.key()}, {"port", std::int64_t{service.port()}}};
    if (apple) {
      line.emplace("apns", apple->facts());
      line.emplace("token", token);
    }
    std::cout << json::write(line) << std::endl;
    return !std::cout.fail();
  }
  messages.print("The phone is at " + service.address() +
                 "\nOpen this address in a browser. Anyone who has it can use the phone.\n" +
                 (apple ? '\n' + apple->description(token) : "") + "\nStop it with Ctrl-C.\n");
  return true;
}

bool run(const PhoneOptions& options) {
  checkWhereToListen(options);
  // Reading may take for ever, from a terminal or a pipe, and ends with the process.
  const std::vector<phone::Line> lines = readScenario(options);
  const ProviderFiles providers(options);
  const sigset_t stop = console::blockStopSignals();
  report::LintService linter;
  const phone::Limits limits{.lines = options.mostLines, .bytes = options.mostMebibytes << 20};
  phone::Rehearsal rehearsal(options.build, limits);

  phone::Transcript transcript(limits);
  phone::Worker worker;
  StandardStreams streams;
  Stopper stopper(stop, [&] {
    worker.stop();
    streams.stop();
  });
  phone::Phone phone(phoneOptions(options), transcript, lines);

  Messages messages(options);
  std::optional<Apple> apple;
  if (options.apns) apple.emplace(options, providers, phone, worker, messages);
  json::Dictionary about{
      {"tool", "quorvantis-push"}, {"version", options.version}, {"build", scenario::nameOf(options.build)}};
  phone::ApiOptions apiOptions{.about = {}, .stop = [&stopper] { stopper.wake(); }, .orderFaults = {}};
  if (apple) {
    about.emplace("apns", apple->facts());
    apiOptions.orderFaults = [&apple](const json::Value& order) { return apple->orderFaults(order); };
  }
  apiOptions.about = std::move(about);
  phone::Api api(phone, worker, transcript, linter, rehearsal, std::move(apiOptions));
  const phone::HttpService service({.address = options.listen,
                                    .port = options.port,
                                    .publicHost = options.publicHost,
                                    .hasPage = options.hasPage,
                                    .keepsKey = options.port != 0},
                                   api);
  if (!announce(options, service, apple, phone.token().value_or(""), messages)) return false;

  auto isPrinted = std::async(std::launch::async, [&] {
    const bool isDone = !options.json || printLines(transcript, streams);
    if (!isDone) stopper.wake();
    return isDone;
  });
  const auto reading = std::async(std::launch::async, [&] {
    if (options.untilEof && streams.awaitEndOfInput()) stopper.wake();
  });
  try {
    worker.work();
  } catch (...) {
    transcript.end();
    stopper.wake();
    throw;
  }
  transcript.end();
  // A second signal ends the process at once, without waiting for requests in progress.
  pthread_sigmask(SIG_UNBLOCK, &stop, nullptr);
  if (!isPrinted.get()) throw std::runtime_error("standard output was not read to its end");
  return !options.strict || !apple || !apple->acceptedErrors();
}

}  // namespace

int phone(const PhoneOptions& options) {
  return run(options) ? 0 : kFailed;
}

}  // namespace quorvantis::tool
