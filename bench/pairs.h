// A row of the table: the same task done by the library, by alternatives, and the limit. The variants run
// with random interleaving, so that a drift of the machine affects all of them.
#pragma once

#include <benchmark/benchmark.h>

#include <string>

namespace quorvantis::bench {

/// Registers one variant ("library", what it is compared with, or "limit") of a row.
template <class Work>
void measure(const std::string& row, const std::string& variant, Work work) {
  benchmark::RegisterBenchmark((row + "|" + variant).c_str(), [work](benchmark::State& state) mutable {
    for (auto round : state) {
      static_cast<void>(round);
      work();
    }
  });
}

/// The same for tasks that wait for the disk or a server: a fixed number of rounds after one that opens files
/// and connections.
template <class Work>
void measureWaiting(const std::string& row, const std::string& variant, Work work) {
  constexpr int kRounds = 20;
  const auto measured = [work](benchmark::State& state) mutable {
    work();
    for (auto round : state) {
      static_cast<void>(round);
      work();
    }
  };
  benchmark::RegisterBenchmark((row + "|" + variant).c_str(), measured)->Iterations(kRounds);
}

// The rows, each registered by the file of that name.
void registerNotifications();
void registerTexts();
void registerProtection();
void registerShared();
void registerSynchronize();
void registerRequests();

}  // namespace quorvantis::bench
