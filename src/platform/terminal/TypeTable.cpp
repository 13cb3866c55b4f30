#include "platform/terminal/TypeTable.h"

#include <algorithm>

namespace norvo {
namespace {

std::string column(const Text& text, std::size_t width) {
  return utf8_from_text(displayable(text)) +
         std::string(text.size() < width ? width - text.size() : 0, ' ');
}

}  // namespace

std::string type_table(const FileTypeCheckList& list) {
  std::size_t width = std::string_view("Extension").size();
  for (const FileTypeEntry& row : list.rows()) width = std::max(width, row.Extension.size());
  std::string table = column(u"Extension", width) + "  Thoro  Description\n";
  for (const FileTypeEntry& row : list.rows()) {
    table += column(row.Extension, width) + "  " + column(row.Thoro, 5) + "  " +
             utf8_from_text(displayable(row.Description)) + "\n";
  }
  return table;
}

}  // namespace norvo
