#include "PlainNaming.h"

#include <stdexcept>

#include "PlainText.h"

namespace plain {
namespace {

Text decimal(std::int64_t value) {
  return *from_utf8(std::to_string(value));
}

Text zeros_before(std::uint64_t n) {
  if (n < 10) {
    return u"0000";
  }
  if (n < 100) {
    return u"000";
  }
  if (n < 1000) {
    return u"00";
  }
  return n < 10000 ? u"0" : u"";
}

Text numbered_name(const Text& prefix, std::uint64_t n, const Text& extension) {
  return prefix + zeros_before(n) + *from_utf8(std::to_string(n)) + u"." + extension;
}

// Signs and spaces are no digits here: such a slice of a folder name reads as 0.
std::int64_t number_of_slice(const Text& slice) {
  const bool starts_with_digit = !slice.empty() && slice[0] >= u'0' && slice[0] <= u'9';
  return starts_with_digit ? to_integer_32(slice) : 0;
}

}  // namespace

Text Generate_File_Name(int mode, const std::vector<Row>& rows, std::uint64_t number,
                        const Text& Prefix, const Text& Extension) {
  std::uint64_t n = number;
  if (mode != 0) {
    for (const Row& row : rows) {
      if (row.FileTypes_Hidden == to_utf8(Prefix)) {
        n = static_cast<std::uint64_t>(to_integer_64(*from_utf8(row.NoOfFile))) + 1;
        break;
      }
    }
  }
  return numbered_name(Prefix, n, Extension);
}

Text Generate_File_UID_Num(std::uint64_t number, bool Thoro_Hai, const Text& Extension) {
  return numbered_name(Thoro_Hai ? u"THD" : u"GND", number, Extension);
}

std::vector<FolderCounter> make_folder_counters(const std::vector<Text>& table) {
  std::vector<FolderCounter> counters;
  for (std::size_t entry = 0; entry < table.size(); entry += 7) {
    bool is_key = false;
    for (const FolderCounter& counter : counters) {
      is_key = is_key || counter.extension == table[entry];
    }
    if (!is_key) {
      counters.push_back({table[entry], -1, table[entry]});
    }
  }
  return counters;
}

FolderCounter& counter_of(std::vector<FolderCounter>& counters, const Text& extension) {
  for (FolderCounter& counter : counters) {
    if (counter.extension == extension) {
      return counter;
    }
  }
  throw std::logic_error("every extension of the table has a counter");
}

Text next_folder_name(const Text& folder) {
  Text name;
  const std::size_t k = folder.find(u'_');
  if (k == Text::npos) {
    name = folder + u"_001";
  } else {
    const auto length = static_cast<std::int32_t>(k);
    const std::int64_t m = number_of_slice(Right_Str_substringFromIndex(folder, length)) + 1;
    const Text stem = Left_Str_substringToIndex(folder, length);
    if (m < 10) {
      name = stem + u"_00" + decimal(m);
    } else if (m < 100) {
      name = stem + u"_0" + decimal(m);
    } else if (m < 1000) {
      name = stem + u"_" + decimal(m);
    }
  }
  return Trim_Str(name);
}

}  // namespace plain
