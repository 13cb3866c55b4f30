// The signature masters as the tests see them, read and matched without any code of the program.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace shipped {

/// One line of a master that holds a colon, cut at the first colon; `line` counts from 1.
struct FieldLine {
  std::size_t line = 0;
  std::string key;    ///< text before the colon, untouched
  std::string value;  ///< text after the colon, blanks at both ends removed
};

/// A record with its values as text, and as numbers where they are used for matching.
struct Record {
  std::size_t line = 0;  ///< line of its first field
  std::string extension;
  std::string size;
  std::string header;
  std::string offset;
  std::string kind;
  std::string description;
  std::vector<std::uint8_t> header_bytes;
  std::size_t first_byte = 0;  ///< place of the header in the sector, from 0
};

inline constexpr std::size_t kSectorSize = 512;
using Sector = std::vector<std::uint8_t>;  ///< always kSectorSize bytes

/// The six keys of a record in their order.
const std::vector<std::string>& record_keys();

/// The folder of the masters joined with "KIND-SCAN.txt".
std::string master_path(const std::string& kind, const std::string& scan);

/// The whole file as it is, or "" when it cannot be read.
std::string read_master(const std::string& kind, const std::string& scan);

std::vector<std::string> lines_of(const std::string& text);
std::vector<FieldLine> field_lines_of(const std::string& text);

/// Every whole record of the file; field lines left over at the end are ignored.
std::vector<Record> records_of(const std::string& kind, const std::string& scan);

/// True when the header stands at its place and inside the sector, and starts before byte 507.
bool matches(const Record& record, const Sector& sector);

/// The first record that matches, or the number of records when none does.
std::size_t first_match(const std::vector<Record>& table, const Sector& sector);

/// True when every sector that `narrow` matches is matched by `wide` too.
bool always_matches_too(const Record& wide, const Record& narrow);

/// True when a match of `matched` also starts a file for `later` in the searches other than photo.
bool starts_too(const Record& matched, const Record& later);

/// The extensions of the files that one sector starts in the searches other than photo.
std::vector<std::string> started_types(const std::vector<Record>& table, const Sector& sector);

/// A sector from a short notation: hexadecimal bytes, 'text' in quotes, @N goes on at byte N.
/// What is not named is zero. Anything else in the notation throws std::invalid_argument.
Sector sector_of(std::string_view notation);

}  // namespace shipped
