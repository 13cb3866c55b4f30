#include "wizard/ExitQuestion.h"

namespace norvo {

void Exit_App(AlertPanel& panel, Desktop& desktop) {
  const AlertAnswer answer =
      panel.run({.message = u"\nDo you really want to exit from Norvo Recovery Software?",
                 .default_button = u"Yes",
                 .alternate_button = {},
                 .other_button = u"No",
                 .informative_text = {}});
  if (answer == AlertAnswer::default_button) desktop.terminate();
}

}  // namespace norvo
