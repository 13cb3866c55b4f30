#include "platform/terminal/TypeTable.h"

#include <algorithm>

namespace norvo {
namespace {

// Signature files can come from strangers, and a terminal obeys what it is shown.
std::string printable(Text text) {
  std::replace_if(
      text.begin(), text.end(),
      [](char16_t c) { return c < 0x20 || (c >= 0x7F && c < 0xA0) || (c >= 0x202A && c <= 0x202E); },
      u'\uFFFD');
  return utf8_from_text(text);
}

std::string column(const Text& text, std::size_t width) {
  return printable(text) + std::string(text.size() < width ? width - text.size() : 0, ' ');
}

}  // namespace

std::string type_table(const FileTypeCheckList& list) {
  std::size_t width = std::string_view("Extension").size();
  for (const FileTypeEntry& row : list.rows()) width = std::max(width, row.Extension.size());
  std::string table = column(u"Extension", width) + "  Thoro  Description\n";
  for (const FileTypeEntry& row : list.rows()) {
    table += column(row.Extension, width) + "  " + column(row.Thoro, 5) + "  " +
             printable(row.Description) + "\n";
  }
  return table;
}

}  // namespace norvo
