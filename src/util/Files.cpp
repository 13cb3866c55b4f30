#include "util/Files.h"

#include <sys/stat.h>

#include <algorithm>
#include <fstream>
#include <iterator>
#include <system_error>

#include "util/Diagnostics.h"

namespace norvo {
namespace fs = std::filesystem;
namespace {

constexpr mode_t folder_permissions = 0777;

// mkdir alone subtracts the umask.
bool create_one_folder(const fs::path& path) {
  if (mkdir(path.c_str(), folder_permissions) != 0) return false;
  return chmod(path.c_str(), folder_permissions) == 0;
}

}  // namespace

bool Create_Folder(const fs::path& path) {
  std::error_code error;
  if (path.empty()) return false;
  if (fs::exists(fs::symlink_status(path, error))) return true;
  const fs::path tidy = path.has_filename() ? path : path.parent_path();
  const fs::path parent = tidy.parent_path();
  if (!parent.empty() && parent != tidy && !Create_Folder(parent)) return false;
  return create_one_folder(tidy) || fs::exists(fs::symlink_status(tidy, error));
}

void Delete_File(const fs::path& path) {
  std::error_code error;
  fs::remove_all(path, error);
  if (error) Show_NSLog_Message(text_from_utf8_lossy(error.message()));
}

std::vector<fs::path> entries_of(const fs::path& folder) {
  std::vector<fs::path> entries;
  std::error_code error;
  // A range-based loop would throw when reading on fails.
  for (fs::directory_iterator entry(folder, error), end; !error && entry != end;
       entry.increment(error)) {
    entries.push_back(entry->path());
  }
  std::sort(entries.begin(), entries.end());
  return entries;
}

std::optional<std::string> read_whole_file(const fs::path& path, std::uintmax_t size_limit) {
  std::error_code error;
  if (!fs::is_regular_file(path, error)) return std::nullopt;
  if (fs::file_size(path, error) > size_limit || error) return std::nullopt;
  std::ifstream stream(path, std::ios::binary);
  std::string content{std::istreambuf_iterator<char>(stream), {}};
  if (stream.bad() || !stream.is_open() || content.size() > size_limit) return std::nullopt;
  return content;
}

}  // namespace norvo
