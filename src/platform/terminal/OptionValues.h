// What can stand as the value of an option of norvo-recover, told by the name that the value has in
// the help. The completions of the shells are made from this.
#pragma once

#include <array>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace norvo {

// The search types as --mode takes them, each at the place of its Recovery_MODE.
inline constexpr std::array<std::string_view, 4> search_type_names{"photo", "video", "raw",
                                                                   "audio"};

enum class ValueKind {
  text,    // nothing can be proposed
  device,  // a block device or a disk image
  folder,
  file,
  choice,  // one of a few words
};

struct OptionValue {
  ValueKind kind = ValueKind::text;
  std::vector<std::string> choices;  // UTF-8, for ValueKind::choice only
};

// What a value with this name is; nothing for a name that no option has. Any thread.
std::optional<OptionValue> option_value(std::string_view value_name);

// The names of the bundles that the build makes, one for each edition, in UTF-8. Any thread.
std::vector<std::string> bundle_names();

// "a, b or c" of the words a, b and c with `conjunction` "or". Any thread.
std::string listed(std::span<const std::string> words, std::string_view conjunction);

}  // namespace norvo
