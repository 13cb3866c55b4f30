#include "engine/OutputFolders.h"

#include <algorithm>
#include <array>
#include <cassert>
#include <string>

#include "util/Numbers.h"

namespace norvo {
namespace {

// Three places, the way the folder names are written: zeros by the number's size, then its digits.
Text folder_number(std::int64_t number) {
  const std::string digits = std::to_string(number);
  const TextView zeros = number < 10 ? u"00" : number < 100 ? u"0" : u"";
  return Text(zeros) + Text(digits.begin(), digits.end());
}

}  // namespace

Text Generate_File_Name(std::uint64_t number, TextView Prefix, TextView Extension) {
  const Text digits = decimal(number);
  const Text zeros(digits.size() < 5 ? 5 - digits.size() : 0, u'0');
  return Text(Prefix) + zeros + digits + u'.' + Text(Extension);
}

Text Generate_File_UID_Num(std::uint64_t number, bool Thoro_Hai, TextView Extension) {
  return Generate_File_Name(number, Thoro_Hai ? u"THD" : u"GND", Extension);
}

std::filesystem::path search_folder(TextView Rec_Folder_Name, std::int32_t Recovery_MODE) {
  constexpr std::array<const char*, 4> type_folders{"Photo Search", "Video Search", "File Search",
                                                    "Audio File Search"};
  return std::filesystem::path(utf8_from_text(Rec_Folder_Name)) /
         type_folders.at(static_cast<std::size_t>(Recovery_MODE));
}

std::filesystem::path pass_folder(const std::filesystem::path& search_folder, Pass pass) {
  return search_folder / (pass == Pass::general ? "General Recovery Results"
                                                : "Omitted (recovered by Thorough Scan)");
}

std::filesystem::path joined(const std::filesystem::path& folder, TextView name) {
  if (name.empty()) return folder;
  return folder.native() + "/" + utf8_from_text(name);
}

Text next_folder_name(TextView folder) {
  const std::size_t k = folder.find(u'_');
  if (k == TextView::npos) return Trim_Str(Text(folder) + u"_001");
  const Text tail = Right_Str_substringFromIndex(folder, static_cast<std::int32_t>(k));
  const bool is_number = !tail.empty() && tail.front() >= u'0' && tail.front() <= u'9';
  const std::int64_t number = is_number ? std::int64_t{integer32_value(tail)} + 1 : 1;
  if (number >= 1000) return {};
  return Trim_Str(Text(folder.substr(0, k)) + u"_" + folder_number(number));
}

void FolderCounters::add_types(const SignatureTable& table) {
  for (std::size_t r = 0; r < started_records(table); ++r) {
    const Text& extension = SignatureRecord(table, r).extension();
    if (find(extension) == nullptr) types_.push_back({.extension = extension, .folder = extension});
  }
}

Text FolderCounters::folder_for_next_file(TextView extension) {
  TypeCounter* type = find(extension);
  assert(type != nullptr);
  ++type->count;
  if (type->count >= files_per_folder) {
    const Text next = next_folder_name(type->folder);
    if (!next.empty()) {
      type->count = 0;
      type->folder = next;
    }
  }
  return type->folder;
}

FolderCounters::TypeCounter* FolderCounters::find(TextView extension) {
  const auto at = std::find_if(types_.begin(), types_.end(), [&](const TypeCounter& type) {
    return type.extension == extension;
  });
  return at == types_.end() ? nullptr : &*at;
}

}  // namespace norvo
