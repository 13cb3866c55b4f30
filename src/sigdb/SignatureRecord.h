// One file type of a signature table: seven consecutive entries of a flat list of texts.
//
//   0 extension   1 maximum size in bytes   2 header as hexadecimal text   3 header position
//   4 carried, read by nothing   5 description   6 first header byte in decimal
//
// A record is a view: it keeps no copy and is valid while its table is unchanged. Any thread may
// read. A table may end inside a record (a signature file whose last record is incomplete); every
// accessor throws MissingEntry for an entry that is not there.
#pragma once

#include <cstddef>
#include <cstdint>
#include <stdexcept>
#include <vector>

#include "util/Text.h"

namespace norvo {

using SignatureTable = std::vector<Text>;

class MissingEntry : public std::out_of_range {
 public:
  MissingEntry(std::size_t entry, std::size_t table_length);
};

class SignatureRecord {
 public:
  static constexpr std::size_t stride = 7;

  // Record `index` of `table`: entries 7 x index to 7 x index + 6.
  SignatureRecord(const SignatureTable& table, std::size_t index)
      : table_(&table), first_(index * stride) {}

  const Text& extension() const { return entry(0); }
  const Text& maximum_size_text() const { return entry(1); }
  // Bytes; 64 bits, sticking at the limits. Empty or without digits is 0.
  std::int64_t maximum_size() const;
  const Text& header() const { return entry(2); }
  // "1": byte 0 of a sector. "nn": the narrow search from byte 0 on. Else a number N: byte N - 1.
  const Text& position_rule() const { return entry(3); }
  // The rule's text as a number: N.
  std::int32_t position() const;
  const Text& description() const { return entry(5); }
  // What the byte at a candidate position must equal; a value outside 0 to 255 equals none.
  std::int32_t gate_byte() const;

 private:
  const Text& entry(std::size_t k) const;

  const SignatureTable* table_;
  std::size_t first_;
};

// Records that a walk in steps of seven visits, an incomplete last one included.
constexpr std::size_t started_records(const SignatureTable& table) {
  return (table.size() + SignatureRecord::stride - 1) / SignatureRecord::stride;
}

// Records of which all seven entries are there.
constexpr std::size_t whole_records(const SignatureTable& table) {
  return table.size() / SignatureRecord::stride;
}

}  // namespace norvo
