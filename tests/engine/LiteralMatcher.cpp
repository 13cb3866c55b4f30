#include "LiteralMatcher.h"

#include <algorithm>
#include <cstdlib>
#include <limits>
#include <string>

namespace norvo::test {
namespace {

std::int64_t number(const Text& text) {
  const long long value = std::strtoll(std::string(text.begin(), text.end()).c_str(), nullptr, 10);
  using Limits = std::numeric_limits<std::int32_t>;
  return std::clamp<long long>(value, Limits::min(), Limits::max());
}

unsigned digit(char16_t c) {
  if (c >= u'0' && c <= u'9') return c - u'0';
  if (c >= u'A' && c <= u'F') return c - u'A' + 10U;
  if (c >= u'a' && c <= u'f') return c - u'a' + 10U;
  return 0;
}

// One record's search. Positions are signed, as one before the sector may come up.
class Search {
 public:
  Search(const Text* record, const std::byte* sector)
      : sector_(sector), digits_(record[2]), rule_(record[3]), gate_(number(record[6])) {}

  bool matches(EmptyHeader empty_header) {
    const auto length = static_cast<std::int64_t>(digits_.size() / 2);
    const bool narrow = rule_ == u"nn";
    const bool numeric = !narrow && rule_ != u"1";
    std::int64_t p = numeric ? number(rule_) - 1 : 0;
    const std::int64_t end = narrow ? 512 : p + length;
    while (p < end) {
      if (p < 0 || p > 511 || byte(p) != gate_) return false;
      if (numeric && p >= 507) return false;
      if (compare(p) == length) {
        return length > 0 || empty_header == EmptyHeader::matches_gate_byte;
      }
      if (!narrow) return false;
      ++p;
    }
    return false;
  }

 private:
  std::int64_t byte(std::int64_t p) const { return std::to_integer<std::int64_t>(sector_[p]); }

  // Moves `p` as far as bytes are equal, one back when the header ends early; returns how many
  // were equal.
  std::int64_t compare(std::int64_t& p) const {
    std::int64_t equal = 0;
    for (std::size_t k = 0; k + 1 < digits_.size(); k += 2) {
      const unsigned wanted = digit(digits_[k]) * 16 + digit(digits_[k + 1]);
      if (p > 511 || byte(p) != wanted) {
        if (equal > 0) --p;
        break;
      }
      ++p;
      ++equal;
    }
    return equal;
  }

  const std::byte* sector_;
  const Text& digits_;
  const Text& rule_;
  std::int64_t gate_;
};

}  // namespace

std::size_t literal_match(const SignatureTable& table, const std::byte* sector,
                          EmptyHeader empty_header) {
  for (std::size_t record = 0; record + 7 <= table.size(); record += 7) {
    if (Search(table.data() + record, sector).matches(empty_header)) return record / 7;
  }
  return HeaderMatcher::no_record;
}

}  // namespace norvo::test
