#include "platform/BundleInfo.h"

#include <pugixml.hpp>

#include "util/Files.h"

namespace norvo {

std::optional<Text> property_text(std::string_view property_list, std::string_view key) {
  pugi::xml_document document;
  if (!document.load_buffer(property_list.data(), property_list.size())) return std::nullopt;
  const pugi::xml_node dictionary = document.child("plist").child("dict");
  const pugi::xml_node entry = dictionary.find_child([key](const pugi::xml_node& node) {
    return std::string_view(node.name()) == "key" && node.text().get() == key;
  });
  const pugi::xml_node value = entry.next_sibling();
  if (std::string_view(value.name()) != "string") return std::nullopt;
  return text_from_utf8(value.text().get());
}

std::optional<Text> read_bundle_property(const std::filesystem::path& bundle,
                                         std::string_view key) {
  constexpr std::uintmax_t largest_property_list = std::uintmax_t{1024} * 1024;
  const auto content = read_whole_file(bundle / "Contents" / "Info.plist", largest_property_list);
  return content ? property_text(*content, key) : std::nullopt;
}

}  // namespace norvo
