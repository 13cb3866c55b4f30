#include "platform/qt/QtMainThread.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QElapsedTimer>
#include <QMessageBox>
#include <QTest>
#include <QTimer>
#include <atomic>
#include <stdexcept>
#include <thread>
#include <vector>

#include "window/WindowTest.h"

namespace norvo {
namespace {

TEST(QtMainThread, posted_work_runs_later_in_the_order_of_the_calls) {
  QtMainThread main_thread;
  std::vector<int> order;
  for (int i = 0; i < 100; ++i) main_thread.post([&order, i] { order.push_back(i); });
  EXPECT_TRUE(order.empty());
  ASSERT_TRUE(wait_until([&order] { return order.size() == 100; }));
  EXPECT_TRUE(std::ranges::is_sorted(order));
}

TEST(QtMainThread, delayed_work_runs_here_and_not_before_its_time) {
  QtMainThread main_thread;
  QElapsedTimer passed;
  passed.start();
  qint64 ran_after = -1;
  main_thread.post_after(std::chrono::milliseconds(100), [&] { ran_after = passed.elapsed(); });
  EXPECT_EQ(ran_after, -1);
  ASSERT_TRUE(wait_until([&ran_after] { return ran_after >= 0; }));
  EXPECT_GE(ran_after, 100);
}

TEST(QtMainThread, delayed_work_is_dropped_after_the_shutdown) {
  QtMainThread main_thread;
  bool ran = false;
  main_thread.post_after(std::chrono::milliseconds(1), [&ran] { ran = true; });
  main_thread.shutdown();
  QTest::qWait(50);
  EXPECT_FALSE(ran);
}

TEST(QtMainThread, a_call_on_the_main_thread_runs_at_once) {
  QtMainThread main_thread;
  bool ran = false;
  main_thread.call_and_wait([&ran] { ran = true; });
  EXPECT_TRUE(ran);
}

TEST(QtMainThread, a_call_from_another_thread_runs_here_and_after_what_was_posted) {
  QtMainThread main_thread;
  std::vector<std::string> order;
  std::thread::id ran_on;
  std::atomic<bool> returned = false;
  std::jthread worker([&] {
    main_thread.post([&order] { order.emplace_back("posted"); });
    main_thread.call_and_wait([&] {
      order.emplace_back("called");
      ran_on = std::this_thread::get_id();
    });
    returned = true;
  });
  ASSERT_TRUE(wait_until([&returned] { return returned.load(); }));
  EXPECT_EQ(order, (std::vector<std::string>{"posted", "called"}));
  EXPECT_EQ(ran_on, std::this_thread::get_id());
}

TEST(QtMainThread, work_runs_while_a_dialog_is_modal) {
  QtMainThread main_thread;
  QMessageBox box;
  std::atomic<bool> called = false;
  std::jthread worker([&] {
    main_thread.call_and_wait([&called] { called = true; });
    main_thread.post([&box] { box.close(); });
  });
  box.exec();
  EXPECT_TRUE(called);
}

TEST(QtMainThread, work_that_opens_a_dialog_is_followed_by_the_next_within_the_dialog) {
  QtMainThread main_thread;
  std::vector<std::string> order;
  QMessageBox box;
  main_thread.post([&] {
    order.emplace_back("opened");
    box.exec();
    order.emplace_back("closed");
  });
  main_thread.post([&order] { order.emplace_back("first within"); });
  main_thread.post([&] {
    order.emplace_back("second within");
    box.close();
  });
  ASSERT_TRUE(wait_until([&order] { return order.size() == 4; }));
  EXPECT_EQ(order, (std::vector<std::string>{"opened", "first within", "second within", "closed"}));
}

TEST(QtMainThread, work_keeps_its_place_among_the_events_of_the_toolkit) {
  QtMainThread main_thread;
  QObject other;
  std::vector<std::string> order;
  const auto post_event = [&](const char* name) {
    QMetaObject::invokeMethod(
        &other, [&order, name] { order.emplace_back(name); }, Qt::QueuedConnection);
  };
  post_event("event 1");
  main_thread.post([&] {
    order.emplace_back("work 1");
    post_event("event 3");
    main_thread.post([&order] { order.emplace_back("work 3"); });
  });
  post_event("event 2");
  main_thread.post([&order] { order.emplace_back("work 2"); });
  ASSERT_TRUE(wait_until([&order] { return order.size() == 6; }));
  EXPECT_EQ(order, (std::vector<std::string>{"event 1", "work 1", "event 2", "work 2", "event 3",
                                             "work 3"}));
}

TEST(QtMainThread, what_the_end_drops_is_destroyed_with_what_it_holds) {
  QtMainThread main_thread;
  const auto held = std::make_shared<int>();
  main_thread.post([held] { FAIL() << "ran after the end"; });
  EXPECT_EQ(held.use_count(), 2);
  main_thread.shutdown();
  EXPECT_EQ(held.use_count(), 1);
  QApplication::processEvents();
}

TEST(QtMainThread, what_the_work_throws_comes_back_to_the_caller) {
  QtMainThread main_thread;
  std::atomic<bool> caught = false;
  std::jthread worker([&] {
    try {
      main_thread.call_and_wait([] { throw std::logic_error("mine"); });
    } catch (const std::logic_error&) {
      caught = true;
    }
  });
  EXPECT_TRUE(wait_until([&caught] { return caught.load(); }));
}

TEST(QtMainThread, who_waits_or_calls_after_the_end_gets_an_exception) {
  QtMainThread main_thread;
  std::atomic<int> caught = 0;
  std::atomic<bool> asked = false;
  bool ran = false;
  std::jthread worker([&] {
    for (int i = 0; i < 2; ++i) {
      try {
        asked = true;
        main_thread.call_and_wait([&ran] { ran = true; });
      } catch (const std::runtime_error&) {
        ++caught;
      }
    }
  });
  while (!asked) std::this_thread::yield();
  main_thread.shutdown();
  worker.join();
  EXPECT_EQ(caught, 2);
  main_thread.post([&ran] { ran = true; });
  QApplication::processEvents();
  EXPECT_FALSE(ran);
}

TEST(QtMainThread, a_call_that_has_begun_is_waited_for_through_the_end) {
  QtMainThread main_thread;
  std::atomic<bool> finished = false;
  std::atomic<bool> returned = false;
  std::jthread worker([&] {
    main_thread.call_and_wait([&] {
      main_thread.shutdown();
      std::this_thread::sleep_for(std::chrono::milliseconds(20));
      finished = true;
    });
    returned = finished.load();
  });
  EXPECT_TRUE(wait_until([&returned] { return returned.load(); }));
}

}  // namespace
}  // namespace norvo
