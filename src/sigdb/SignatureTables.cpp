#include "sigdb/SignatureTables.h"

#include <algorithm>
#include <cstdint>
#include <optional>
#include <string>
#include <utility>

#include "sigdb/SignatureFormat.h"
#include "util/Files.h"
#include "util/Hexadecimal.h"
#include "util/LetterCase.h"

namespace norvo {
namespace {

// Strips the dot of an extension; every field goes through the same rule.
Text transformed(TextView trimmed) {
  const std::size_t stop = trimmed.find(u'.');
  return stop == TextView::npos ? Text(trimmed) : upper_case(trimmed.substr(stop + 1));
}

std::optional<Text> read_text(const std::filesystem::path& path) {
  const std::optional<std::string> bytes = read_whole_file(path, largest_signature_file);
  return bytes ? text_from_utf8(*bytes) : std::nullopt;
}

}  // namespace

bool names_a_signature_file(TextView general_file_name) {
  return general_file_name.size() > 4;
}

void SignatureLoader::append_records(TextView text, SignatureTable& table) {
  std::size_t fields = 0;
  for (std::size_t from = 0; from <= text.size();) {
    const std::size_t end = std::min(text.find(u'\n', from), text.size());
    const TextView line = text.substr(from, end - from);
    from = end + 1;

    const std::optional<SignatureField> field = signature_field(line);
    if (!field) continue;
    if (field->is_header && field->value.size() >= 2) {
      pending_header_byte_ = decimal(hex2int(Left_Str_substringToIndex(field->value, 2)));
    }
    table.push_back(transformed(field->value));
    if (++fields == fields_per_record) {
      table.push_back(std::exchange(pending_header_byte_, {}));
      fields = 0;
    }
  }
}

void SignatureTables::load(const std::filesystem::path& resource_folder,
                           const SignatureFileNames& names) {
  SignatureLoader loader;
  const auto read = [&](const Text& name, SignatureTable& table) {
    if (const auto text = read_text(resource_folder / name)) loader.append_records(*text, table);
  };
  read(names.photo_dll, Ext_Array);
  read(names.photo_dll_adv, Adv_Ext_Array);
  if (names_a_signature_file(names.video_dll)) {
    read(names.video_dll, Video_Array);
    read(names.video_dll_adv, Adv_Video_Array);
  }
  if (names_a_signature_file(names.raw_dll)) {
    read(names.raw_dll, RawFile_Array);
    read(names.raw_dll_adv, Adv_RawFile_Array);
  }
  if (names_a_signature_file(names.audio_dll)) {
    read(names.audio_dll, Audio_Array);
    read(names.audio_dll_adv, Adv_Audio_Array);
  }
}

}  // namespace norvo
