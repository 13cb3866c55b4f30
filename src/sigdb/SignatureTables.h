// The signature tables: what the program can find, read from plain text files.
//
// A file is UTF-8 text whose lines are separated by line feeds. A line without a colon is ignored.
// Every other line is a field: its value is what follows the first colon, trimmed; a value that
// holds a full stop becomes what follows the first full stop, in upper case. Six fields make a
// record of seven entries (sigdb/SignatureRecord.h); the seventh is the first byte of the most
// recent line that begins exactly "Header :".
#pragma once

#include <filesystem>

#include "sigdb/SignatureRecord.h"
#include "util/Text.h"

namespace norvo {

// File names inside the resource folder; empty for a search type that the edition does not have.
struct SignatureFileNames {
  Text photo_dll;
  Text photo_dll_adv;
  Text video_dll;
  Text video_dll_adv;
  Text raw_dll;
  Text raw_dll_adv;
  Text audio_dll;
  Text audio_dll_adv;

  bool operator==(const SignatureFileNames&) const = default;
};

// A search type exists when the name of its General file is longer than four characters (longer
// than a bare ending such as ".dll").
bool names_a_signature_file(TextView general_file_name);

// Reads signature text after signature text. The header byte that waits for its record is carried
// from one text to the next.
class SignatureLoader {
 public:
  // Appends the records of `text` to `table`, left-over fields of an incomplete last record too.
  void append_records(TextView text, SignatureTable& table);

 private:
  Text pending_header_byte_;
};

// The General and Thorough tables of each search type. Filled once per process, then only read:
// any thread.
struct SignatureTables {
  SignatureTable Ext_Array;
  SignatureTable Adv_Ext_Array;
  SignatureTable Video_Array;
  SignatureTable Adv_Video_Array;
  SignatureTable RawFile_Array;
  SignatureTable Adv_RawFile_Array;
  SignatureTable Audio_Array;
  SignatureTable Adv_Audio_Array;

  // Reads the files of `names` from `resource_folder`. A file that is missing, unreadable, not
  // UTF-8 or larger than 64 MiB leaves its table empty, silently.
  void load(const std::filesystem::path& resource_folder, const SignatureFileNames& names);
};

}  // namespace norvo
