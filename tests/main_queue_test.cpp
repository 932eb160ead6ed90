#include "device/main_queue.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <thread>

namespace quorvantis::device {
namespace {

using std::chrono::nanoseconds;

class MainQueueTest : public testing::Test {
 protected:
  MainQueue::Task note(std::string name) {
    return [this, name = std::move(name)] { log += name + " "; };
  }

  const MainQueue::Runner run = [](const MainQueue::Task& task) { task(); };
  MainQueue queue;
  std::string log;
};

TEST_F(MainQueueTest, RunsDueTasksInOrder) {
  queue.postAfter(nanoseconds(5), note("late"));
  queue.postAfter(nanoseconds(3), [this] {
    note("early")();
    queue.post(note("its-own"));
    queue.postAfter(nanoseconds(2), note("late-too"));
    queue.postAfter(nanoseconds(3), note("too-late"));
  });
  queue.postAfter(nanoseconds(3), note("early-too"));
  queue.post(note("first"));
  queue.advance(nanoseconds(5), run);
  EXPECT_EQ(log, "first early its-own early-too late late-too ");
  queue.advance(nanoseconds(0), run);
  EXPECT_EQ(log.find("too-late"), std::string::npos);
  queue.advance(nanoseconds::max(), run);
  EXPECT_NE(log.find("too-late"), std::string::npos);
  queue.postAfter(nanoseconds(2), note("after-all"));
  queue.advance(nanoseconds(1), run);
  EXPECT_EQ(log.find("after-all"), std::string::npos);
}

TEST_F(MainQueueTest, ContinuesAfterAFailedTask) {
  queue.post([] { throw 1; });
  queue.post(note("next"));
  EXPECT_THROW(queue.settle(run), int);
  queue.settle(run);
  EXPECT_EQ(log, "next ");
}

TEST_F(MainQueueTest, StopsBeforeATaskThatIsNotReadyAndResumesThere) {
  bool isReady = false;
  queue.post(note("first"));
  queue.postWhen([&] { return isReady; },
                 [this] {
                   note("answer")();
                   queue.postAfter(nanoseconds(1), note("soon"));
                 });
  queue.post(note("behind"));
  queue.postAfter(nanoseconds(3), note("late"));
  queue.postAfter(nanoseconds(4), note("too-late"));
  queue.advance(nanoseconds(3), run);
  EXPECT_TRUE(queue.isStopped());
  queue.goOn(run);
  EXPECT_EQ(log, "first ");
  isReady = true;
  queue.goOn(run);
  EXPECT_FALSE(queue.isStopped());
  EXPECT_EQ(log, "first answer behind soon late ");
  queue.goOn(run);
  queue.advance(nanoseconds(0), run);
  EXPECT_EQ(log, "first answer behind soon late ");
  queue.advance(nanoseconds(1), run);
  EXPECT_EQ(log, "first answer behind soon late too-late ");

  queue.postWhen([] { return false; }, note("never"));
  queue.settle(run);
  EXPECT_TRUE(queue.isStopped());
  queue.clear();
  EXPECT_FALSE(queue.isStopped());
}

TEST_F(MainQueueTest, DestroysATaskBeforeTheNextOne) {
  const auto held = std::shared_ptr<void>(nullptr, [this](void*) { note("released")(); });
  queue.post([mine = held] {});
  queue.post([mine = std::shared_ptr<void>(nullptr, [this](void*) { queue.post(note("unseen")); })] {});
  queue.post(note("next"));
  EXPECT_EQ(held.use_count(), 2);
  queue.settle([&](const MainQueue::Task& task) {
    task();
    log += std::to_string(held.use_count()) + " ";
  });
  EXPECT_EQ(log, "2 1 next 1 unseen 1 ");
}

TEST_F(MainQueueTest, DropsPendingTasksWhenCleared) {
  // What a dropped task holds may post.
  queue.post([this, mine = std::shared_ptr<void>(nullptr, [this](void*) { queue.post(note("after")); })] {
    note("dropped")();
  });
  queue.postAfter(nanoseconds(1), note("dropped"));
  queue.clear();
  queue.advance(nanoseconds(1), run);
  EXPECT_EQ(log, "after ");
}

TEST_F(MainQueueTest, AcceptsTasksFromManyThreads) {
  constexpr int kTasks = 1000;
  int ran = 0;
  const auto post = [&] {
    for (int task = 0; task < kTasks; ++task) {
      queue.post([&ran] { ++ran; });
      queue.postAfter(nanoseconds(1), [&ran] { ++ran; });
    }
  };
  std::thread threads[] = {std::thread(post), std::thread(post), std::thread(post), std::thread(post)};
  while (ran < 100) queue.settle(run);
  for (std::thread& thread : threads) thread.join();
  queue.advance(nanoseconds(1), run);
  EXPECT_EQ(ran, 8 * kTasks);
}

}  // namespace
}  // namespace quorvantis::device
