// Folders and files of the program itself. What a search writes goes through
// engine/OutputTree, which does not follow links. Any thread.
#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

namespace norvo {

// When nothing exists at `path`, creates the folder with all missing parents, each with the
// permissions 0777 whatever the umask, and returns whether that succeeded. When anything exists
// there, even a plain file, returns true and leaves it alone.
bool Create_Folder(const std::filesystem::path& path);

// Removes what is at `path` (a folder with its contents). The outcome is not reported; the reason
// of a failure goes to the diagnostic sink. A link is removed, not followed.
void Delete_File(const std::filesystem::path& path);

// What a folder holds, sorted by name; nothing when it cannot be read.
std::vector<std::filesystem::path> entries_of(const std::filesystem::path& folder);

// The whole content, or nullopt when it is no readable regular file or larger than `size_limit`
// bytes.
std::optional<std::string> read_whole_file(const std::filesystem::path& path,
                                           std::uintmax_t size_limit);

}  // namespace norvo
