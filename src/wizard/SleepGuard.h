// Keeps the computer awake. Main thread only.
#pragma once

namespace norvo {

class SleepGuard {
 public:
  virtual ~SleepGuard() = default;

  // Holds sleep off from now on, or no longer. Where the system does not allow it nothing happens.
  virtual void hold_off_sleep(bool on) = 0;
};

}  // namespace norvo
