// The two blocking boxes that tell and ask. They are shown on the main thread; the caller waits
// until they were closed. Any thread.
#pragma once

#include <atomic>
#include <cstdint>
#include <functional>

#include "util/Alert.h"
#include "util/Text.h"
#include "wizard/MainThread.h"

namespace norvo {

class MessageBoxes {
 public:
  // What is referred to outlives the boxes.
  MessageBoxes(AlertPanel& panel, MainThread& main_thread)
      : panel_(panel), main_thread_(main_thread) {}

  // An information box with the one button "OK". A line break is put in front of `message`. When
  // the main thread cannot be reached the message is lost.
  void Show_MessageBox(TextView message);

  // A question box with Yes and No. True only when Yes was pressed: a question that cannot reach
  // the main thread is answered with No.
  bool Show_YES_NO_MessageBox(TextView question);

  // Their halves on the main thread.
  void Main_Thread_Messgae(TextView text);
  void Main_Thread_Messgae_Yes_No(TextView text);

 private:
  // Whether the main thread has shown the box.
  bool show(const std::function<void()>& box);

  AlertPanel& panel_;
  MainThread& main_thread_;
};

// The answer of the last question box: 1 for Yes, 0 otherwise. One question at a time is asked.
extern std::atomic<std::int32_t> yes_no_msg_val;

}  // namespace norvo
