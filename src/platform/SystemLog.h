// The system log, as a stream.
#pragma once

#include <ostream>
#include <string>
#include <utility>

#include "platform/LogLines.h"

namespace norvo {

// What is written to its stream goes line by line (LogLines) to the log of the system, which keeps
// it: a program that a desktop starts has no other place for it. Where standard error is a terminal
// the lines go there as well. That there is no log is not told.
//
// One object at a time, and one thread at a time.
class SystemLog {
 public:
  // `name` is what the log calls the program: one word.
  explicit SystemLog(std::string name) : name_(std::move(name)) {}

  std::ostream& stream() { return stream_; }

 private:
  class Name {
   public:
    explicit Name(std::string name);
    ~Name();
    Name(const Name&) = delete;
    Name& operator=(const Name&) = delete;

   private:
    std::string text_;  // the system keeps a pointer to it
  };

  static void write_line(const std::string& line);

  Name name_;
  LogLines lines_{write_line};
  std::ostream stream_{&lines_};
};

}  // namespace norvo
