// A process beside this one that answers requests, one at a time: for work that takes a process of its own,
// as the simulated phone does, and to use more than one core for it. It is a copy of this process as it stood
// when the helper was made, and ends with the helper, or with this process.
//
// Threads: made before the process has any but the main thread; then used by one thread at a time.
#pragma once

#include <sys/types.h>

#include <functional>
#include <string>

namespace quorvantis::lint {

class HelperProcess {
 public:
  /// What `answer` throws becomes the failure of the request.
  using Answer = std::function<std::string(const std::string& request)>;

  /// Throws std::system_error.
  explicit HelperProcess(const Answer& answer);
  ~HelperProcess();
  HelperProcess(const HelperProcess&) = delete;
  HelperProcess& operator=(const HelperProcess&) = delete;

  /// Both throw std::runtime_error: what the answer threw, or that the process has ended.
  void send(const std::string& request);
  std::string receive();

  /// Readable when an answer is there.
  [[nodiscard]] int descriptor() const { return descriptor_; }

 private:
  int descriptor_ = -1;
  pid_t process_ = -1;
};

}  // namespace quorvantis::lint
