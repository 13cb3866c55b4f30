// Signature files to flat tables, line by line.
#pragma once

#include <array>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "PlainSearch.h"

namespace plain {

// The files in the order in which they are loaded; nothing stands for a file that cannot be read.
// One table per file. The pending header value goes on from file to file.
std::vector<std::vector<Text>> load_tables(const std::vector<std::optional<std::string>>& files);

// One file on its own.
std::vector<Text> load_table(const std::string& utf8);

// File names of an edition: photo, video, raw and audio, each General before Thorough.
using EditionFileNames = std::array<std::string, 8>;

// The eight tables of an edition. `read` answers a file's bytes, or nothing; it is not asked for
// the files of a search type whose General name has four characters or fewer (photos excepted).
std::vector<std::vector<Text>> load_edition(
    const EditionFileNames& names,
    const std::function<std::optional<std::string>(const std::string&)>& read);

}  // namespace plain
