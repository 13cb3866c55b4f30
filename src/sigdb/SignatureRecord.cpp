#include "sigdb/SignatureRecord.h"

#include <string>

#include "util/Numbers.h"

namespace norvo {

MissingEntry::MissingEntry(std::size_t entry, std::size_t table_length)
    : std::out_of_range("The signature table ends inside a record: entry " + std::to_string(entry) +
                        " is beyond its " + std::to_string(table_length) + " entries.") {
}

std::int64_t SignatureRecord::maximum_size() const {
  return integer64_value(entry(1));
}

std::int32_t SignatureRecord::position() const {
  return integer32_value(position_rule());
}

std::int32_t SignatureRecord::gate_byte() const {
  return integer32_value(entry(6));
}

const Text& SignatureRecord::entry(std::size_t k) const {
  if (first_ + k >= table_->size()) throw MissingEntry(first_ + k, table_->size());
  return (*table_)[first_ + k];
}

}  // namespace norvo
