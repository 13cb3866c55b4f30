// Files as a test finds and makes them.
#pragma once

#include <cstddef>
#include <filesystem>
#include <set>
#include <string>
#include <vector>

#include "support/FileContent.h"

namespace norvo::test {

inline std::vector<std::byte> bytes_of(const std::filesystem::path& path) {
  std::vector<std::byte> bytes;
  for (const char c : read_file(path)) bytes.push_back(static_cast<std::byte>(c));
  return bytes;
}

// With its folders.
inline void make_file(const std::filesystem::path& path, const std::string& content) {
  std::filesystem::create_directories(path.parent_path());
  write_file(path, content);
}

// Everything below `root`, relative to it; folders end in a slash. Links are not followed.
inline std::set<std::string> entries_below(const std::filesystem::path& root) {
  namespace fs = std::filesystem;
  std::set<std::string> entries;
  if (!fs::exists(root)) return entries;
  for (const fs::directory_entry& entry : fs::recursive_directory_iterator(root)) {
    const bool folder = entry.is_directory() && !entry.is_symlink();
    entries.insert(entry.path().lexically_relative(root).native() + (folder ? "/" : ""));
  }
  return entries;
}

}  // namespace norvo::test
