// Measures all rows of the table; the arguments are Google Benchmark's, bench/table.py reads the result.
#include "bench/pairs.h"

int main(int count, char** arguments) {
  benchmark::Initialize(&count, arguments);
  if (benchmark::ReportUnrecognizedArguments(count, arguments)) return 2;
  quorvantis::bench::registerNotifications();
  quorvantis::bench::registerTexts();
  quorvantis::bench::registerProtection();
  quorvantis::bench::registerShared();
  quorvantis::bench::registerSynchronize();
  quorvantis::bench::registerRequests();
  benchmark::RunSpecifiedBenchmarks();
}
