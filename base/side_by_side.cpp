#include "base/side_by_side.h"

#include <poll.h>

#include <algorithm>
#include <cerrno>
#include <map>
#include <memory>
#include <system_error>
#include <thread>
#include <vector>

#include "base/helper_process.h"

namespace quorvantis::base {

namespace {

using Work = std::function<std::string(std::size_t first, std::size_t end)>;
using Take = std::function<void(const std::string&)>;

/// With fewer items, starting a process takes longer than the work.
constexpr std::size_t kFewestForAProcess = 16;

class Crew {
 public:
  Crew(std::size_t count, std::size_t processes, const Work& work, const Take& take)
      : count_(count), portion_(std::clamp<std::size_t>(count / (processes * 8), 1, 32)), take_(take) {
    const auto answer = [this, &work](const std::string& request) {
      const std::size_t first = std::stoul(request);
      return work(first, std::min(first + portion_, count_));
    };
    for (std::size_t i = 0; i < processes; ++i) {
      members_.push_back({std::make_unique<HelperProcess>(answer), 0});
    }
  }

  void run() {
    for (Member& member : members_) giveWork(member);
    while (taken_ < count_) {
      for (Member* member : waitForAnswers()) {
        answers_.emplace(member->first, member->process->receive());
        giveWork(*member);
      }
      takeInOrder();
    }
  }

 private:
  struct Member {
    std::unique_ptr<HelperProcess> process;
    std::size_t first;  ///< of the items that it works on
  };

  void giveWork(Member& member) {
    if (given_ >= count_) return;
    member.first = given_;
    member.process->send(std::to_string(given_));
    given_ += portion_;
  }

  std::vector<Member*> waitForAnswers() {
    std::vector<pollfd> waiting;
    for (const Member& member : members_) waiting.push_back({member.process->descriptor(), POLLIN, 0});
    while (poll(waiting.data(), waiting.size(), -1) < 0) {
      if (errno != EINTR)
        throw std::system_error(errno, std::generic_category(), "waiting for a helper process");
    }
    std::vector<Member*> ready;
    for (std::size_t i = 0; i < waiting.size(); ++i) {
      if (waiting[i].revents != 0) ready.push_back(&members_[i]);
    }
    return ready;
  }

  void takeInOrder() {
    for (auto next = answers_.find(taken_); next != answers_.end(); next = answers_.find(taken_)) {
      take_(next->second);
      answers_.erase(next);
      taken_ += portion_;
    }
  }

  const std::size_t count_, portion_;
  const Take& take_;
  std::vector<Member> members_;
  std::map<std::size_t, std::string> answers_;  // by their first item; those that have arrived early
  std::size_t given_ = 0, taken_ = 0;
};

}  // namespace

void sideBySide(std::size_t count, const Work& work, const Take& take) {
  const std::size_t cores = std::max(1U, std::thread::hardware_concurrency());
  const std::size_t processes = std::min(cores, count / kFewestForAProcess);
  if (processes > 1) return Crew(count, processes, work, take).run();
  for (std::size_t i = 0; i < count; ++i) take(work(i, i + 1));
}

}  // namespace quorvantis::base
