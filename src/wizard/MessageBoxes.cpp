#include "wizard/MessageBoxes.h"

#include <exception>

#include "util/Diagnostics.h"

namespace norvo {

std::atomic<std::int32_t> yes_no_msg_val{0};

void MessageBoxes::Show_MessageBox(TextView message) {
  const Text text = u"\n" + Text(message);
  static_cast<void>(show([&] { Main_Thread_Messgae(text); }));
}

bool MessageBoxes::show(const std::function<void()>& box) {
  try {
    main_thread_.call_and_wait(box);
    return true;
  } catch (const std::exception& reason) {
    Show_NSLog_Message(text_from_utf8_lossy(reason.what()));
    return false;
  }
}

void MessageBoxes::Main_Thread_Messgae(TextView text) {
  static_cast<void>(show_msg(panel_, text));
}

bool MessageBoxes::Show_YES_NO_MessageBox(TextView question) {
  return show([&] { Main_Thread_Messgae_Yes_No(question); }) && yes_no_msg_val == 1;
}

void MessageBoxes::Main_Thread_Messgae_Yes_No(TextView text) {
  yes_no_msg_val = 0;
  const AlertAnswer answer = panel_.run({.message = Text(text),
                                         .default_button = u"Yes",
                                         .alternate_button = {},
                                         .other_button = u"No",
                                         .informative_text = {}});
  if (answer == AlertAnswer::default_button) yes_no_msg_val = 1;
}

}  // namespace norvo
