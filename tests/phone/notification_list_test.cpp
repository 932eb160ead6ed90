// What a provider replaces is found at once, however many notifications are listed.
#include "phone/notification_list.h"

#include <gtest/gtest.h>

#include <chrono>

namespace quorvantis::phone {
namespace {

TEST(NotificationList, FindsWhatANewOneReplaces) {
  NotificationList list;
  list.add(std::nullopt, share("1"));
  list.add("a", share("2"));
  list.add(std::nullopt, share("3"));
  EXPECT_EQ(*list.lineOf(3), "3");
  EXPECT_EQ(list.find("a"), 2);
  EXPECT_EQ(list.find("b"), std::nullopt);
  EXPECT_EQ(list.find(std::nullopt), std::nullopt);
  EXPECT_TRUE(list.remove(2));
  EXPECT_FALSE(list.remove(2));
  EXPECT_EQ(list.find("a"), std::nullopt);
  EXPECT_EQ(list.lineOf(2), nullptr);
  EXPECT_EQ(list.next(), 4);
  list.add("a", share("4"));
  EXPECT_EQ(list.find("a"), 4);
}

TEST(NotificationList, TakesNoLongerForTheLastThanForTheFirst) {
  // In a list that is searched from its beginning these take minutes.
  constexpr int kMany = 200'000;
  const auto began = std::chrono::steady_clock::now();
  NotificationList list;
  for (int i = 0; i < kMany; ++i) {
    const CollapseId id = "order-" + std::to_string(i);
    ASSERT_EQ(list.find(id), std::nullopt);
    list.add(id, nullptr);
  }
  EXPECT_LT(std::chrono::steady_clock::now() - began, std::chrono::seconds(20));
}

}  // namespace
}  // namespace quorvantis::phone
