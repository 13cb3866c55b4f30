#include "platform/terminal/TypeTable.h"

#include <algorithm>

#include "platform/terminal/Columns.h"
#include "platform/terminal/EventWriter.h"

namespace norvo {
namespace {

std::string column(const Text& text, std::size_t width) {
  return filled_behind(displayable(text), width);
}

}  // namespace

std::string type_table(const FileTypeCheckList& list) {
  std::size_t width = std::string_view("Extension").size();
  for (const FileTypeEntry& row : list.rows()) {
    width = std::max(width, display_columns(displayable(row.Extension)));
  }
  std::string table = column(u"Extension", width) + "  Thoro  Description\n";
  for (const FileTypeEntry& row : list.rows()) {
    table += column(row.Extension, width) + "  " + column(row.Thoro, 5) + "  " +
             utf8_from_text(displayable(row.Description)) + "\n";
  }
  return table;
}

void report_types(const FileTypeCheckList& list, bool json, std::ostream& out) {
  if (!json) {
    out << type_table(list);
    return;
  }
  EventWriter events(out);
  for (const FileTypeEntry& row : list.rows()) events.type(row);
}

}  // namespace norvo
