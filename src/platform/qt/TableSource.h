// What a table shows, as functions over a list that somebody else keeps.
#pragma once

#include <cstddef>
#include <functional>
#include <optional>
#include <string_view>

#include "util/Text.h"

namespace norvo {

// Called on the main thread, between two reloads too; rows that are gone have no value.
struct TableSource {
  std::function<std::size_t()> rows;
  std::function<std::optional<Text>(std::string_view column, std::size_t row)> value;

  // Only for a table with a column of boxes: whether this row's is ticked.
  std::function<bool(std::size_t row)> ticked = {};
};

}  // namespace norvo
