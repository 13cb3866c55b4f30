#include "MasterFile.h"

#include <algorithm>
#include <charconv>
#include <fstream>
#include <iterator>
#include <stdexcept>

namespace shipped {

namespace {

constexpr std::size_t kFirstForbiddenByte = 507;

std::string trimmed(const std::string& text) {
  const char* const blanks = " \t\r\v\f";
  const std::size_t first = text.find_first_not_of(blanks);
  if (first == std::string::npos) return "";
  return text.substr(first, text.find_last_not_of(blanks) - first + 1);
}

std::uint8_t byte_of(std::string_view digits) {
  unsigned value = 0;
  const char* const end = digits.data() + digits.size();
  const auto result = std::from_chars(digits.data(), end, value, 16);
  if (digits.size() != 2 || result.ec != std::errc{} || result.ptr != end) {
    throw std::invalid_argument("not a byte: " + std::string(digits));
  }
  return static_cast<std::uint8_t>(value);
}

std::vector<std::uint8_t> bytes_of(const std::string& digits) {
  std::vector<std::uint8_t> bytes;
  for (std::size_t at = 0; at < digits.size(); at += 2) {
    bytes.push_back(byte_of(digits.substr(at, 2)));
  }
  return bytes;
}

Record record_from(const std::vector<FieldLine>& fields, std::size_t at) {
  Record record;
  record.line = fields[at].line;
  record.extension = fields[at].value;
  record.size = fields[at + 1].value;
  record.header = fields[at + 2].value;
  record.offset = fields[at + 3].value;
  record.kind = fields[at + 4].value;
  record.description = fields[at + 5].value;
  record.header_bytes = bytes_of(record.header);
  record.first_byte = std::stoul(record.offset) - 1;
  return record;
}

}  // namespace

const std::vector<std::string>& record_keys() {
  static const std::vector<std::string> keys = {"Extension", "Size", "Header",
                                                "Offset",    "Kind", "Description"};
  return keys;
}

std::string master_path(const std::string& kind, const std::string& scan) {
  return std::string(NORVO_SIGNATURE_MASTERS) + "/" + kind + "-" + scan + ".txt";
}

std::string read_master(const std::string& kind, const std::string& scan) {
  std::ifstream file(master_path(kind, scan), std::ios::binary);
  return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

std::vector<std::string> lines_of(const std::string& text) {
  std::vector<std::string> lines;
  std::size_t begin = 0;
  for (std::size_t end = text.find('\n'); end != std::string::npos; end = text.find('\n', begin)) {
    lines.push_back(text.substr(begin, end - begin));
    begin = end + 1;
  }
  if (begin < text.size()) lines.push_back(text.substr(begin));
  return lines;
}

std::vector<FieldLine> field_lines_of(const std::string& text) {
  std::vector<FieldLine> fields;
  std::size_t number = 0;
  for (const std::string& line : lines_of(text)) {
    ++number;
    const std::size_t colon = line.find(':');
    if (colon == std::string::npos) continue;
    fields.push_back({number, line.substr(0, colon), trimmed(line.substr(colon + 1))});
  }
  return fields;
}

std::vector<Record> records_of(const std::string& kind, const std::string& scan) {
  const std::vector<FieldLine> fields = field_lines_of(read_master(kind, scan));
  const std::size_t stride = record_keys().size();
  std::vector<Record> records;
  for (std::size_t at = 0; at + stride <= fields.size(); at += stride) {
    records.push_back(record_from(fields, at));
  }
  return records;
}

bool matches(const Record& record, const Sector& sector) {
  const std::size_t begin = record.first_byte;
  const std::size_t length = record.header_bytes.size();
  if (length == 0 || begin >= kFirstForbiddenByte || begin + length > kSectorSize) return false;
  return std::equal(record.header_bytes.begin(), record.header_bytes.end(),
                    sector.begin() + static_cast<std::ptrdiff_t>(begin));
}

std::size_t first_match(const std::vector<Record>& table, const Sector& sector) {
  std::size_t at = 0;
  while (at < table.size() && !matches(table[at], sector)) ++at;
  return at;
}

bool always_matches_too(const Record& wide, const Record& narrow) {
  if (wide.first_byte < narrow.first_byte) return false;
  const std::size_t skip = wide.first_byte - narrow.first_byte;
  if (skip + wide.header_bytes.size() > narrow.header_bytes.size()) return false;
  return std::equal(wide.header_bytes.begin(), wide.header_bytes.end(),
                    narrow.header_bytes.begin() + static_cast<std::ptrdiff_t>(skip));
}

bool starts_too(const Record& matched, const Record& later) {
  if (matched.header.find(later.header) != std::string::npos) return true;
  return matched.offset == later.offset && later.header.find(matched.header) != std::string::npos;
}

std::vector<std::string> started_types(const std::vector<Record>& table, const Sector& sector) {
  std::vector<std::string> types;
  const std::size_t matched = first_match(table, sector);
  for (std::size_t at = matched; at < table.size(); ++at) {
    if (starts_too(table[matched], table[at])) types.push_back(table[at].extension);
  }
  return types;
}

Sector sector_of(std::string_view notation) {
  Sector sector(kSectorSize, 0);
  std::size_t at = 0;
  std::size_t i = 0;
  while (i < notation.size()) {
    if (notation[i] == ' ') {
      ++i;
    } else if (notation[i] == '\'') {
      const std::size_t end = notation.find('\'', i + 1);
      if (end == std::string::npos)
        throw std::invalid_argument("open quote in " + std::string(notation));
      for (++i; i < end; ++i) sector.at(at++) = static_cast<std::uint8_t>(notation[i]);
      ++i;
    } else if (notation[i] == '@') {
      std::size_t digits = 0;
      at = std::stoul(std::string(notation.substr(i + 1)), &digits);
      i += 1 + digits;
    } else {
      sector.at(at++) = byte_of(notation.substr(i, 2));
      i += 2;
    }
  }
  return sector;
}

}  // namespace shipped
