#include "platform/linux/MountTable.h"

#include <algorithm>
#include <string>
#include <utility>

namespace norvo {
namespace {

// Two numbers of the mount itself stand in front of that of the device.
constexpr int fields_before_number = 2;

std::string_view take_until(std::string_view& text, std::string_view separator) {
  const std::size_t end = text.find(separator);
  const std::string_view taken = text.substr(0, end);
  text.remove_prefix(end == std::string_view::npos ? text.size() : end + separator.size());
  return taken;
}

bool is_octal_digit(char c) {
  return c >= '0' && c <= '7';
}

// Blanks, line ends and backslashes stand as a backslash and three octal digits.
std::string unescaped(std::string_view field) {
  std::string path;
  for (std::size_t i = 0; i < field.size(); ++i) {
    const std::string_view digits = field.substr(i + 1, 3);
    if (field[i] == '\\' && digits.size() == 3 &&
        std::all_of(digits.begin(), digits.end(), is_octal_digit)) {
      path.push_back(
          static_cast<char>((digits[0] - '0') * 64 + (digits[1] - '0') * 8 + (digits[2] - '0')));
      i += digits.size();
    } else {
      path.push_back(field[i]);
    }
  }
  return path;
}

}  // namespace

MountTable mounted_file_systems(std::string_view table) {
  MountTable mounts;
  while (!table.empty()) {
    std::string_view rest = take_until(table, "\n");
    std::string_view fields = take_until(rest, " - ");
    for (int i = 0; i < fields_before_number; ++i) take_until(fields, " ");
    const std::string number(take_until(fields, " "));
    take_until(fields, " ");  // the folder of the file system that is mounted
    const std::string path = unescaped(take_until(fields, " "));
    Text type = text_from_utf8_lossy(take_until(rest, " "));
    if (!path.starts_with('/') || type.empty()) continue;
    if (type.starts_with(u"fuse")) type.clear();
    // Of file systems mounted over each other the last one is seen.
    mounts.insert_or_assign(path, MountedFileSystem{std::move(type), number});
  }
  return mounts;
}

}  // namespace norvo
