#include <latch>
#include <set>
#include <stdexcept>
#include <thread>

#include "tests/phone.h"

namespace quorvantis {
namespace {

using SharedThreadsTest = PhoneTest;

template <class Work>
void onThreads(int count, Work work) {
  std::latch start(count);
  std::vector<std::thread> threads;
  threads.reserve(static_cast<std::size_t>(count));
  for (int i = 0; i < count; ++i) {
    threads.emplace_back([&, i] {
      start.arrive_and_wait();
      work(i);
    });
  }
  for (std::thread& thread : threads) thread.join();
}

struct FirstPush : Counted<Push> {
  void init() override {
    ++inits;
    Push::init();
  }
  static inline std::atomic<int> inits = 0;
};

struct OtherPush : FirstPush {};

TEST_F(SharedThreadsTest, AllThreadsGetTheOneInstance) {
  constexpr int kThreads = 8;
  for (int round = 1; round <= 50; ++round) {
    std::vector<Push*> seen(kThreads);
    onThreads(kThreads, [&](int i) {
      auto& mine = seen[static_cast<std::size_t>(i)];
      mine = i % 2 == 0 ? &Push::shared<FirstPush>() : &Push::shared<OtherPush>();
    });
    EXPECT_EQ(std::set<Push*>(seen.begin(), seen.end()).size(), 1u);
    EXPECT_EQ(FirstPush::inits, round);
    emptySharedSlot();
    EXPECT_EQ(FirstPush::live, 0);
  }
}

TEST_F(SharedThreadsTest, AFailedFirstCallDoesNotBlockTheNextOne) {
  struct Failing : Counted<Push> {
    void init() override { throw std::runtime_error("not today"); }
  };
  EXPECT_THROW(Push::shared<Failing>(), std::runtime_error);
  EXPECT_EQ(Failing::live, 0);
  Push* seen = nullptr;
  onThreads(1, [&](int) { seen = &Push::shared(); });
  EXPECT_EQ(seen, &Push::shared());
}

}  // namespace
}  // namespace quorvantis
