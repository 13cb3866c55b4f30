// Work for an object of the main thread, posted by others.
#include "wizard/ScopedPosts.h"

#include <gtest/gtest.h>

#include <optional>
#include <thread>
#include <vector>

#include "support/FakeMainThread.h"

namespace norvo::test {
namespace {

TEST(ScopedPosts, are_run_in_the_order_of_the_calls_and_not_before) {
  QueuedMainThread main_thread;
  const ScopedPosts posts(main_thread);
  std::vector<int> order;
  std::thread([&] {
    for (int i = 0; i < 3; ++i) posts.post([&order, i] { order.push_back(i); });
  }).join();
  EXPECT_TRUE(order.empty());
  main_thread.run_all();
  EXPECT_EQ(order, (std::vector<int>{0, 1, 2}));
}

TEST(ScopedPosts, are_dropped_when_their_object_is_gone) {
  QueuedMainThread main_thread;
  std::optional<ScopedPosts> posts(std::in_place, main_thread);
  bool ran = false;
  std::thread([&] { posts->post([&ran] { ran = true; }); }).join();
  posts.reset();
  main_thread.run_all();
  EXPECT_FALSE(ran);
}

TEST(ScopedPosts, may_end_their_object) {
  QueuedMainThread main_thread;
  std::optional<ScopedPosts> posts(std::in_place, main_thread);
  int runs = 0;
  for (int i = 0; i < 2; ++i) {
    posts->post([&] {
      posts.reset();
      ++runs;
    });
  }
  main_thread.run_all();
  EXPECT_EQ(runs, 1);
}

}  // namespace
}  // namespace norvo::test
