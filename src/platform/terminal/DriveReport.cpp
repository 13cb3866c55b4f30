#include "platform/terminal/DriveReport.h"

#include <algorithm>
#include <array>
#include <vector>

#include "platform/System.h"
#include "platform/terminal/Columns.h"
#include "platform/terminal/EventWriter.h"

namespace norvo {
namespace {

using Line = std::array<Text, drive_columns.size()>;

// What a cell shows, or the column's heading above the first row.
std::vector<Line> lines_of(const DriveList& list) {
  std::vector<Line> lines(list.numberOfRows() + 1);
  for (std::size_t column = 0; column < drive_columns.size(); ++column) {
    lines[0][column] = drive_columns[column].heading;
    for (std::size_t row = 0; row < list.numberOfRows(); ++row) {
      const auto shown = list.objectValue(drive_columns[column].identifier, row);
      lines[row + 1][column] = shown.value_or(u"");
    }
  }
  return lines;
}

}  // namespace

std::string drive_table(const DriveList& list) {
  const std::vector<Line> lines = lines_of(list);
  std::array<std::size_t, drive_columns.size()> widths{};
  for (const Line& line : lines) {
    for (std::size_t i = 0; i < line.size(); ++i) {
      widths[i] = std::max(widths[i], display_columns(line[i]));
    }
  }
  std::string table;
  for (const Line& line : lines) {
    for (std::size_t i = 0; i < line.size(); ++i) {
      table +=
          (i == 0 ? "" : "  ") + (drive_columns[i].is_number ? filled_in_front(line[i], widths[i])
                                                             : filled_behind(line[i], widths[i]));
    }
    table += '\n';
  }
  return table;
}

void report_drives(const DriveList& list, bool USE_HARD_DISK, bool json, std::ostream& out,
                   std::ostream& err) {
  if (list.numberOfRows() == 0) {
    err << (USE_HARD_DISK ? "No drive is mounted."
                          : "No removable drive is mounted, and this edition lists no others.")
        << " Connect the card or drive and open it in the file browser, then try again. One that "
           "cannot be opened there can still be searched: give its node to --device.\n";
    return;
  }
  if (!json) {
    out << drive_table(list) << std::flush;
    return;
  }
  EventWriter events(out);
  for (const MyDataObject& drive : list.nsMutaryOfDataObject()) {
    events.drive(drive, raw_node(drive.nsStrDiskIdentifier));
  }
}

}  // namespace norvo
