// What a report of recovered files looks like. It is written piece by piece; each piece is whole,
// so that a report that ends after any of them can be read. Pure functions of their arguments.
#pragma once

#include <string>

#include "platform/terminal/ReportedFile.h"

namespace norvo {

class ReportFormat {
 public:
  virtual ~ReportFormat() = default;

  // What stands before the first file, between two files nothing, and after the last one.
  virtual std::string beginning() const = 0;
  virtual std::string file(const ReportedFile& file) const = 0;
  virtual std::string ending() const = 0;
};

}  // namespace norvo
