// What a bundle says of itself in its property list.
#pragma once

#include <filesystem>
#include <optional>
#include <string_view>

#include "util/Text.h"

namespace norvo {

// The text of an entry of a property list's XML; nothing when it is no property list or has no such
// text. Any thread.
std::optional<Text> property_text(std::string_view property_list, std::string_view key);

// An entry of the Contents/Info.plist of the bundle folder `bundle`. Any thread.
std::optional<Text> read_bundle_property(const std::filesystem::path& bundle, std::string_view key);

}  // namespace norvo
