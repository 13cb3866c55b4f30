// A report as comma-separated values (RFC 4180): one row of names, then one row a file, each ended
// by carriage return and line feed. No cell can be taken for a formula.
#pragma once

#include <string_view>

#include "platform/terminal/ReportFormat.h"

namespace norvo {

class CsvFormat final : public ReportFormat {
 public:
  std::string beginning() const override;
  std::string file(const ReportedFile& file) const override;
  std::string ending() const override { return {}; }
};

// `text` as one cell. A table program would calculate what begins with = + - @ or a tabulator, so
// such a text gets an apostrophe in front, and so does one that begins with an apostrophe: taking
// one leading apostrophe away always gives the text back. Quoted where it has to be, and where it
// holds what some table programs take for the end of a cell instead of the comma: a semicolon or a
// tabulator, behind which a formula could stand.
std::string csv_cell(std::string_view text);

}  // namespace norvo
