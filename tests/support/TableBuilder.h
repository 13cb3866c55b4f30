// Signature tables as a test writes them: one row for each type.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "sigdb/SignatureRecord.h"
#include "util/Text.h"

namespace norvo::test {

struct TypeRow {
  Text extension;
  Text maximum;  // bytes
  Text header;   // hexadecimal digits
  Text position = u"1";
  std::optional<Text> gate = std::nullopt;  // decimal; the header's first byte when it is left out
};

// The first two hexadecimal digits of `header` as a decimal text; empty when there are none.
inline Text first_byte(const Text& header) {
  if (header.size() < 2) return {};
  const std::string digits(header.begin(), header.begin() + 2);
  const std::string number = std::to_string(std::stoi(digits, nullptr, 16));
  return Text(number.begin(), number.end());
}

inline SignatureTable table_of(const std::vector<TypeRow>& rows) {
  SignatureTable table;
  for (const TypeRow& row : rows) {
    const Text gate = row.gate ? *row.gate : first_byte(row.header);
    for (const Text& entry : {row.extension, row.maximum, row.header, row.position, Text(u"?"),
                              Text(u"a type"), gate}) {
      table.push_back(entry);
    }
  }
  return table;
}

// Limits that no test reaches.
inline constexpr const char16_t* no_limit = u"1000000000";

// The headers that a Card draws as J, P and G.
inline TypeRow jpeg(const Text& maximum = no_limit) {
  return {u"JPG", maximum, u"FFD8FF"};
}
inline TypeRow png(const Text& maximum = no_limit) {
  return {u"PNG", maximum, u"89504E47"};
}
inline TypeRow gif(const Text& maximum = no_limit) {
  return {u"GIF", maximum, u"47494638"};
}

}  // namespace norvo::test
