#include "PlainSignatures.h"

#include "PlainText.h"

namespace plain {
namespace {

Text transform_value(const Text& value) {
  const std::size_t stop = value.find(u'.');
  return stop == Text::npos ? value : upper_case(value.substr(stop + 1));
}

std::vector<Text> split_lines(const Text& text) {
  std::vector<Text> pieces;
  std::size_t begin = 0;
  while (true) {
    const std::size_t feed = text.find(u'\n', begin);
    if (feed == Text::npos) {
      pieces.push_back(text.substr(begin));
      return pieces;
    }
    pieces.push_back(text.substr(begin, feed - begin));
    begin = feed + 1;
  }
}

Text decimal(std::uint32_t value) {
  Text digits;
  for (const char c : std::to_string(value)) {
    digits.push_back(static_cast<char16_t>(c));
  }
  return digits;
}

std::vector<Text> load_one(const std::optional<std::string>& file, Text& pending_header) {
  std::vector<Text> table;
  const std::optional<Text> text = file ? from_utf8(*file) : std::nullopt;
  if (!text) {
    return table;
  }
  int field_counter = 0;
  for (const Text& piece : split_lines(*text)) {
    const std::size_t colon = piece.find(u':');
    if (colon == Text::npos) {
      continue;
    }
    const Text value = Trim_Str(piece.substr(colon + 1));
    if (piece.substr(0, colon + 1) == u"Header :" && value.size() >= 2) {
      pending_header = decimal(hex2int(value.substr(0, 2)));
    }
    table.push_back(transform_value(value));
    if (++field_counter == 6) {
      table.push_back(pending_header);
      pending_header.clear();
      field_counter = 0;
    }
  }
  return table;
}

}  // namespace

std::vector<std::vector<Text>> load_tables(const std::vector<std::optional<std::string>>& files) {
  std::vector<std::vector<Text>> tables;
  tables.reserve(files.size());
  Text pending_header;
  for (const std::optional<std::string>& file : files) {
    tables.push_back(load_one(file, pending_header));
  }
  return tables;
}

std::vector<Text> load_table(const std::string& utf8) {
  return load_tables({utf8}).front();
}

std::vector<std::vector<Text>> load_edition(
    const EditionFileNames& names,
    const std::function<std::optional<std::string>(const std::string&)>& read) {
  std::vector<std::optional<std::string>> files;
  for (std::size_t i = 0; i < names.size(); ++i) {
    const std::string& general_name = names[i - i % 2];
    const bool is_photo = i < 2;
    files.push_back(is_photo || general_name.size() > 4 ? read(names[i]) : std::nullopt);
  }
  return load_tables(files);
}

}  // namespace plain
