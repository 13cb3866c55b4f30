// Thrown inside a pass when recovered data cannot be saved: a folder or file cannot be created, or
// a write fails. The pass turns it into its saving-failure exit; it never leaves the engine.
#pragma once

#include <stdexcept>

namespace norvo {

class SavingFailure : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

}  // namespace norvo
