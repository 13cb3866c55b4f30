// Lines for a log out of what is written to a stream.
#pragma once

#include <cstddef>
#include <functional>
#include <streambuf>
#include <string>

namespace norvo {

// A stream's buffer that hands over one line at a time, when its end is written; what is left
// without one, when the buffer goes. A line has no control character and none that changes the
// direction of text (U+FFFD stands for each, and for what is no UTF-8). Of a line longer than
// `longest_line` the beginning is handed over, with "..." for the rest; empty lines are dropped.
// One thread at a time.
class LogLines final : public std::streambuf {
 public:
  static constexpr std::size_t longest_line = 1000;  // bytes that were written

  using Sink = std::function<void(const std::string& line)>;
  explicit LogLines(Sink sink) : sink_(std::move(sink)) {}
  ~LogLines() override;
  LogLines(const LogLines&) = delete;
  LogLines& operator=(const LogLines&) = delete;

 protected:
  int_type overflow(int_type c) override;

 private:
  void add(char c);
  void end_line();

  Sink sink_;
  std::string line_;
  bool is_cut_ = false;
};

}  // namespace norvo
