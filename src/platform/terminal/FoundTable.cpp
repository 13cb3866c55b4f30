#include "platform/terminal/FoundTable.h"

#include <algorithm>
#include <array>
#include <iomanip>
#include <sstream>
#include <tuple>

#include "platform/terminal/Columns.h"
#include "util/Text.h"

namespace norvo {
namespace {

constexpr std::size_t search_width = 11;
constexpr std::size_t type_width = 12;
constexpr int number_width = 10;

void write_row(std::ostream& out, TextView search, TextView type, const std::string& files,
               const std::string& size) {
  out << "  " << filled_behind(search, search_width) << filled_behind(type, type_width)
      << std::right << std::setw(number_width) << files << std::setw(number_width) << size << '\n';
}

}  // namespace

void FoundTable::add(Pass pass, const std::string& type, std::uint64_t bytes) {
  auto row = std::find_if(rows_.begin(), rows_.end(), [&](const Row& candidate) {
    return candidate.pass == pass && candidate.type == type;
  });
  if (row == rows_.end()) row = rows_.insert(rows_.end(), {.pass = pass, .type = type});
  ++row->files;
  row->bytes += bytes;
  ++files_;
}

std::string FoundTable::text() const {
  if (rows_.empty()) return "  Nothing was found.\n";
  std::vector<Row> rows = rows_;
  std::sort(rows.begin(), rows.end(), [](const Row& a, const Row& b) {
    return std::tie(a.pass, a.type) < std::tie(b.pass, b.type);
  });
  std::ostringstream out;
  write_row(out, u"Search", u"Type", "Files", "Size");
  std::uint64_t bytes = 0;
  for (const Row& row : rows) {
    write_row(out, row.pass == Pass::general ? u"General" : u"Thorough",
              displayable(text_from_utf8_lossy(row.type)), std::to_string(row.files),
              readable_size(row.bytes));
    bytes += row.bytes;
  }
  write_row(out, u"Total", u"", std::to_string(files_), readable_size(bytes));
  return out.str();
}

std::string readable_size(std::uint64_t bytes) {
  constexpr std::array<const char*, 6> units{"B", "KB", "MB", "GB", "TB", "PB"};
  auto value = static_cast<double>(bytes);
  std::size_t unit = 0;
  // 999.95 would round to "1000.0".
  while (value >= (unit == 0 ? 1000.0 : 999.95) && unit + 1 < units.size()) {
    value /= 1000;
    ++unit;
  }
  std::ostringstream out;
  out << std::fixed << std::setprecision(unit == 0 ? 0 : 1) << value << ' ' << units[unit];
  return out.str();
}

}  // namespace norvo
