// Counts what repeats exactly. `quorvantis_counts exact`: allocations, and under callgrind the instructions,
// of the tasks in bench/budgets. `quorvantis_counts effects`: fsyncs, and network traffic. Prints one line
// per figure: its value and its name.
#include <unistd.h>
#include <valgrind/callgrind.h>

#include <cstdio>
#include <cstring>
#include <ctime>

#include "bench/allocations.h"
#include "bench/fsyncs.h"
#include "bench/loopback.h"
#include "bench/payloads.h"
#include "bench/plain_settings.h"
#include "bench/relay.h"
#include "bench/request_body.h"
#include "bench/seven_settings.h"
#include "facade/shared_slot.h"
#include "json/read.h"
#include "platform/simulated/values.h"
#include "tests/scratch_folder.h"

namespace quorvantis::bench {

namespace {

using platform::NSDictionary;

void print(const std::string& name, std::size_t value) {
  std::printf("%zu %s\n", value, name.c_str());
}

/// Callgrind writes a file for each task, which contains its name.
template <class Work>
void count(const std::string& name, Work work) {
  const Allocations taken = allocationsOf([&] {
    CALLGRIND_ZERO_STATS;
    CALLGRIND_TOGGLE_COLLECT;
    work();
    CALLGRIND_TOGGLE_COLLECT;
    CALLGRIND_DUMP_STATS_AT(name.c_str());
  });
  print("allocations: " + name, taken.count);
  print("bytes allocated: " + name, taken.bytes);
}

template <class Work>
void countOnceWarm(const std::string& name, Work work) {
  for (int i = 0; i < 3; ++i) work();
  Phone::only().forget();
  count(name, work);
}

void countNotification(const Payload& payload) {
  Phone& phone = Phone::only();
  phone.device.application.state =
      payload.active ? device::ApplicationState::active : device::ApplicationState::background;
  phone.push.activePushNotificationsInForegroundApp(payload.showInForeground);
  const auto parsed = platform::simulated::objectFrom(std::get<json::Value>(json::read(payload.text)));
  countOnceWarm("notification, " + payload.name, [&] {
    phone.push.didReceiveRemoteNotification(parsed.as<NSDictionary>());
    phone.host.last = nullptr;
  });
}

int countExactly() {
  const ScratchFolder folder;
  {
    device::Device device(folder.path() / "settings.sqlite");
    // A line in the list of system calls, where a tracer looks for the first and the last one.
    ::access("/first-shared-begins", F_OK);
    count("first shared", [] { Push::shared(); });
    ::access("/first-shared-ends", F_OK);
    emptySharedSlot();
  }
  for (const Payload& payload : everyKind()) countNotification(payload);
  for (const int keys : {100, 400}) countNotification(silentWith(keys));
  for (const std::size_t length : {32U, 160U}) {
    const auto data = platform::simulated::objectFrom(json::Data{std::string(length, '\x5a')});
    countOnceWarm("token to text, " + std::to_string(length) + " bytes",
                  [&] { Phone::only().push.hexadecimalStringFromData(data.as<platform::NSData>()); });
  }
  countOnceWarm("request body", [] { bodyByLibrary(); });
  return 0;
}

void countFsyncs() {
  Phone& phone = Phone::only();
  const auto defaults = platform::NSUserDefaults::standardUserDefaults();
  PlainSettings plain(phone.folder.path() / "plain.sqlite");
  for (int round = 0; round < 2; ++round) {  // the first one opens the files
    storeSeven(round);
    int before = fsyncs();
    defaults.synchronize();
    const int library = fsyncs() - before;
    before = fsyncs();
    plain.commit(sevenRows(round));
    if (round == 0) continue;
    print("fsyncs: synchronize, seven values changed, library", static_cast<std::size_t>(library));
    print("fsyncs: synchronize, seven values changed, SQLite", static_cast<std::size_t>(fsyncs() - before));
  }
  const int before = fsyncs();
  defaults.synchronize();
  print("fsyncs: synchronize, nothing changed, library", static_cast<std::size_t>(fsyncs() - before));
}

void printTraffic(const std::string& name, const Traffic& traffic) {
  print("connections: " + name, static_cast<std::size_t>(traffic.connections));
  print("round trips: " + name, static_cast<std::size_t>(traffic.turns));
  print("bytes up: " + name, traffic.up);
  print("bytes down: " + name, traffic.down);
}

void countTraffic() {
  Loopback& loopback = Loopback::only();
  Relay relay(loopback.port());
  loopback.target = relay.port();
  BareClient bare;
  for (const bool reuse : {false, true}) {
    const std::string name = std::string("registration, connection ") + (reuse ? "reused" : "new");
    registerByLibrary(reuse);
    relay.take();
    registerByLibrary(reuse);
    printTraffic(name + ", library", relay.take());
    bare.post(reuse);
    relay.take();
    bare.post(reuse);
    printTraffic(name + ", libcurl", relay.take());
  }
  loopback.target = loopback.port();
}

std::size_t microseconds(clockid_t clock) {
  timespec time{};
  ::clock_gettime(clock, &time);
  return static_cast<std::size_t>(time.tv_sec) * 1'000'000 + static_cast<std::size_t>(time.tv_nsec) / 1000;
}

/// The server's cost of the launch of an application with an activated library, depending on the token.
void countLaunches() {
  Loopback& loopback = Loopback::only();
  loopback.keepRegistrations = true;
  Relay relay(loopback.port());
  const auto launch = [&](const std::string& name, const std::string& token) {
    loopback.target = relay.port();
    relay.take();
    loopback.requests = 0;
    handOver(token, false);
    const std::size_t requests = loopback.requests;
    print("requests: launch, " + name, requests);
    printTraffic("launch, " + name, relay.take());
  };
  Phone::only().device.removeFromElsewhere({"tokenMovil"});
  launch("token new", std::string(32, 'a'));
  launch("token unchanged", std::string(32, 'a'));
  launch("token changed", std::string(32, 'b'));

  constexpr std::size_t kLaunches = 40;
  loopback.target = loopback.port();
  const std::size_t all = microseconds(CLOCK_PROCESS_CPUTIME_ID);
  const std::size_t own = microseconds(CLOCK_THREAD_CPUTIME_ID);
  for (std::size_t i = 0; i < kLaunches; ++i) handOver(std::string(32, static_cast<char>('A' + i)), false);
  const std::size_t client = microseconds(CLOCK_THREAD_CPUTIME_ID) - own;
  const std::size_t server = microseconds(CLOCK_PROCESS_CPUTIME_ID) - all - client;
  print("server's CPU microseconds: launch, token changed", server / kLaunches);
}

}  // namespace

}  // namespace quorvantis::bench

int main(int count, char** arguments) {
  using namespace quorvantis::bench;
  if (count == 2 && std::strcmp(arguments[1], "exact") == 0) return countExactly();
  if (count == 2 && std::strcmp(arguments[1], "effects") == 0) {
    countFsyncs();
    countTraffic();
    countLaunches();
    return 0;
  }
  std::fputs("usage: quorvantis_counts exact|effects\n", stderr);
  return 2;
}
