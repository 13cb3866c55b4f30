#include "platform/macos/DiskutilReport.h"

#include <charconv>
#include <pugixml.hpp>
#include <string>

namespace norvo {
namespace {

// Texts in any number of pieces, with white space as it stands.
std::string content_of(const pugi::xml_node& node) {
  std::string content;
  for (const pugi::xml_node& piece : node.children()) content += piece.value();
  return content;
}

std::optional<std::uint64_t> unsigned_integer(const std::string& digits) {
  std::uint64_t number = 0;
  const char* const end = digits.data() + digits.size();
  const auto read = std::from_chars(digits.data(), end, number);
  return read.ec == std::errc() && read.ptr == end ? std::optional(number) : std::nullopt;
}

void add_value(DiskReport& report, const std::string& key, const pugi::xml_node& value) {
  if (report.text(key) || report.number(key)) return;
  const std::string_view kind = value.name();
  if (kind == "string") {
    report.set(key, text_from_utf8_lossy(content_of(value)));
  } else if (kind == "integer") {
    if (const auto number = unsigned_integer(content_of(value))) report.set(key, *number);
  }
}

bool is_element(const pugi::xml_node& node) {
  return node.type() == pugi::node_element;
}

}  // namespace

std::optional<DiskReport> read_diskutil_report(std::string_view output) {
  if (output.size() > diskutil_output_limit) return std::nullopt;
  pugi::xml_document document;
  const unsigned flags = pugi::parse_default | pugi::parse_ws_pcdata;
  if (!document.load_buffer(output.data(), output.size(), flags, pugi::encoding_utf8)) {
    return std::nullopt;
  }
  const pugi::xml_node dictionary = document.child("plist").find_child(is_element);
  if (std::string_view(dictionary.name()) != "dict") return std::nullopt;

  DiskReport report;
  std::optional<std::string> key;
  for (const pugi::xml_node& entry : dictionary.children()) {
    if (!is_element(entry)) continue;
    const bool is_key = std::string_view(entry.name()) == "key";
    // Keys and values take turns.
    if (is_key == key.has_value()) return std::nullopt;
    if (is_key) {
      key = content_of(entry);
    } else {
      add_value(report, *key, entry);
      key.reset();
    }
  }
  return key ? std::nullopt : std::optional(report);
}

std::filesystem::path raw_disk_node(TextView identifier) {
  return "/dev/r" + utf8_from_text(identifier);
}

}  // namespace norvo
