// What the wizard asks of the part of the program that searches. Main thread.
#pragma once

#include "wizard/WizardState.h"

namespace norvo {

class SearchHost {
 public:
  virtual ~SearchHost() = default;

  // Withdraws a stop request, unless a pass has yet to see it.
  virtual void clear_stop_now() = 0;

  // Makes the tables and the found-files rows of the ticked types, in place of the previous ones.
  virtual void hand_over_selection() = 0;

  // Whether the drive can be opened; changes nothing that the wizard sees.
  virtual void Check_Have_Permissions(TextView disk_identifier) = 0;

  // Starts the worker and the timer; returns at once. While the worker of an earlier search has not
  // ended, the search begins when it has.
  virtual void start_search(const SearchSettings& settings) = 0;
};

}  // namespace norvo
