// The two blocking boxes, from the main thread and from others.
#include "wizard/MessageBoxes.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <thread>

#include "support/FakeMainThread.h"
#include "support/WindowFakes.h"

namespace norvo::test {
namespace {

using testing::ElementsAre;

class MessageBoxesTest : public testing::Test {
 protected:
  EventLog log_;
  FakePanel panel_{log_};
  QueuedMainThread main_thread_;
  MessageBoxes boxes_{panel_, main_thread_};
};

TEST_F(MessageBoxesTest, AnInformationBeginsOneLineLower) {
  boxes_.Show_MessageBox(u"Told.");
  EXPECT_THAT(log_.entries(), ElementsAre("alert \"\nTold.\" [OK]"));
}

TEST_F(MessageBoxesTest, EvenAnEmptyInformationDoes) {
  boxes_.Show_MessageBox(u"");
  EXPECT_THAT(log_.entries(), ElementsAre("alert \"\n\" [OK]"));
}

TEST_F(MessageBoxesTest, AQuestionStandsAsItIs) {
  EXPECT_TRUE(boxes_.Show_YES_NO_MessageBox(u"Really?"));
  EXPECT_THAT(log_.entries(), ElementsAre("alert \"Really?\" [Yes|No]"));
  EXPECT_EQ(yes_no_msg_val, 1);
}

TEST_F(MessageBoxesTest, AnythingButYesIsNo) {
  panel_.answers = {AlertAnswer::other_button, AlertAnswer::default_button,
                    AlertAnswer::alternate_button};
  EXPECT_FALSE(boxes_.Show_YES_NO_MessageBox(u"Really?"));
  EXPECT_EQ(yes_no_msg_val, 0);
  EXPECT_TRUE(boxes_.Show_YES_NO_MessageBox(u"Really?"));
  EXPECT_FALSE(boxes_.Show_YES_NO_MessageBox(u"Really?"));
  EXPECT_EQ(yes_no_msg_val, 0);
}

TEST_F(MessageBoxesTest, TheMainThreadsHalvesTakeTheTextAsItIs) {
  boxes_.Main_Thread_Messgae(u"Told.");
  boxes_.Main_Thread_Messgae_Yes_No(u"Asked?");
  EXPECT_THAT(log_.entries(), ElementsAre("alert \"Told.\" [OK]", "alert \"Asked?\" [Yes|No]"));
}

TEST_F(MessageBoxesTest, AWorkerWaitsUntilTheMainThreadHasShownTheBox) {
  std::thread::id shown_by;
  bool box_open = false;
  panel_.during_alert = [&](const Alert&) {
    shown_by = std::this_thread::get_id();
    box_open = true;
    std::this_thread::sleep_for(std::chrono::milliseconds(20));
    log_.add("closed");
    box_open = false;
  };
  std::atomic<bool> done{false};
  std::thread worker([&] {
    boxes_.Show_MessageBox(u"From the worker");
    log_.add("worker goes on");
    done = true;
  });
  EXPECT_TRUE(main_thread_.run_until([&] { return done.load(); }));
  worker.join();
  EXPECT_EQ(shown_by, std::this_thread::get_id());
  EXPECT_FALSE(box_open);
  EXPECT_THAT(log_.entries(),
              ElementsAre("alert \"\nFrom the worker\" [OK]", "closed", "worker goes on"));
}

TEST_F(MessageBoxesTest, AWorkerGetsItsAnswer) {
  panel_.answers = {AlertAnswer::default_button, AlertAnswer::other_button};
  bool first = false;
  bool second = true;
  std::atomic<bool> done{false};
  std::thread worker([&] {
    first = boxes_.Show_YES_NO_MessageBox(u"One?");
    second = boxes_.Show_YES_NO_MessageBox(u"Two?");
    done = true;
  });
  EXPECT_TRUE(main_thread_.run_until([&] { return done.load(); }));
  worker.join();
  EXPECT_TRUE(first);
  EXPECT_FALSE(second);
}

TEST_F(MessageBoxesTest, AMessageIsLostWhenTheMainThreadTakesNoMoreWork) {
  main_thread_.close();
  std::thread worker([&] {
    boxes_.Show_MessageBox(u"Lost");
    log_.add("worker goes on");
  });
  worker.join();
  EXPECT_THAT(log_.entries(), ElementsAre("worker goes on"));
}

TEST_F(MessageBoxesTest, AQuestionIsAnsweredWithNoWhenTheMainThreadTakesNoMoreWork) {
  EXPECT_TRUE(boxes_.Show_YES_NO_MessageBox(u"Before?")) << "its answer must not stand for later";
  main_thread_.close();
  bool answer = true;
  std::thread worker([&] {
    answer = boxes_.Show_YES_NO_MessageBox(u"Lost?");
    log_.add("worker goes on");
  });
  worker.join();
  EXPECT_FALSE(answer);
  EXPECT_THAT(log_.entries(), ElementsAre("alert \"Before?\" [Yes|No]", "worker goes on"));
}

}  // namespace
}  // namespace norvo::test
