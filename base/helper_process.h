// A second process that answers requests, one at a time: for work that needs a separate process, as the
// simulated phone does, and to use more than one core for it. It is a copy of this process at the time when
// the helper was created, and ends with the helper, or with this process.
//
// Threads: made before the process has any but the main thread; then used by one thread at a time.
#pragma once

#include <sys/types.h>

#include <functional>
#include <string>

namespace quorvantis::base {

class HelperProcess {
 public:
  /// An exception from `answer` makes the request fail.
  using Answer = std::function<std::string(const std::string& request)>;

  /// Throws std::system_error.
  explicit HelperProcess(const Answer& answer);
  ~HelperProcess();
  HelperProcess(const HelperProcess&) = delete;
  HelperProcess& operator=(const HelperProcess&) = delete;

  /// Both throw std::runtime_error: with the answer's exception, or because the process has ended.
  void send(const std::string& request);
  std::string receive();

  /// Readable when an answer has arrived.
  [[nodiscard]] int descriptor() const { return descriptor_; }

 private:
  int descriptor_ = -1;
  pid_t process_ = -1;
};

}  // namespace quorvantis::base
