// JSON in tests without a thicket of backslashes.
#pragma once

#include <algorithm>
#include <string>

namespace norvo::test {

// `text` with every ' turned into ".
inline std::string json(std::string text) {
  std::replace(text.begin(), text.end(), '\'', '"');
  return text;
}

}  // namespace norvo::test
