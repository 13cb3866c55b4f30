// A control that shows a number from a range and gives back exactly the number that was set, until
// the person changes it. Main thread.
#pragma once

#include <algorithm>
#include <optional>

namespace norvo {

class ExactValue {
 public:
  virtual ~ExactValue() = default;

  // A value outside moves to the nearer end. An end below the start counts as the start.
  void set_range(double minimum, double maximum) {
    minimum_ = minimum;
    maximum_ = std::max(minimum, maximum);
    set_value(value_);
  }

  // Without a value the position is not known; value() keeps the last one.
  void set_value(std::optional<double> value) {
    known_ = value.has_value();
    if (value) value_ = std::clamp(*value, minimum_, maximum_);
    show_value();
  }

  double minimum() const { return minimum_; }
  double maximum() const { return maximum_; }
  double value() const { return value_; }

  // The value's place in the range, 0 to 1; 0 in an empty range. Nothing while it is not known.
  std::optional<double> share() const {
    if (!known_) return std::nullopt;
    return maximum_ > minimum_ ? (value_ - minimum_) / (maximum_ - minimum_) : 0;
  }

 protected:
  // Brings the picture in line with share(). Must not report to anyone.
  virtual void show_value() = 0;

  // The person moved to this place; the ends are met exactly.
  void take_share(double share) {
    value_ = share >= 1 ? maximum_ : minimum_ + share * (maximum_ - minimum_);
    value_ = std::clamp(value_, minimum_, maximum_);
    known_ = true;
  }

 private:
  double minimum_ = 0;
  double maximum_ = 1;
  double value_ = 0;
  bool known_ = true;
};

}  // namespace norvo
