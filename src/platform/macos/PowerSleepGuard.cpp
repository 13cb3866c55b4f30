// Sleep is held off by a power assertion.
#include <CoreFoundation/CoreFoundation.h>
#include <IOKit/pwr_mgt/IOPMLib.h>

#include "platform/WindowSystem.h"

namespace norvo {
namespace {

class PowerSleepGuard final : public SleepGuard {
 public:
  ~PowerSleepGuard() override { release(); }

  void hold_off_sleep(bool on) override {
    release();
    if (!on) return;
    if (IOPMAssertionCreateWithName(kIOPMAssertionTypePreventUserIdleSystemSleep,
                                    kIOPMAssertionLevelOn,
                                    CFSTR("Norvo Recovery searches a drive for lost files"),
                                    &assertion_) != kIOReturnSuccess) {
      assertion_ = kIOPMNullAssertionID;
    }
  }

 private:
  void release() {
    if (assertion_ != kIOPMNullAssertionID) IOPMAssertionRelease(assertion_);
    assertion_ = kIOPMNullAssertionID;
  }

  IOPMAssertionID assertion_ = kIOPMNullAssertionID;
};

}  // namespace

std::unique_ptr<SleepGuard> make_system_sleep_guard() {
  return std::make_unique<PowerSleepGuard>();
}

}  // namespace norvo
