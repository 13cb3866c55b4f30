// Files as a test finds and makes them.
#pragma once

#include <cstddef>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <set>
#include <string>
#include <vector>

namespace norvo::test {

inline std::vector<std::byte> bytes_of(const std::filesystem::path& path) {
  std::ifstream file(path, std::ios::binary);
  const std::string content{std::istreambuf_iterator<char>(file), {}};
  std::vector<std::byte> bytes;
  for (const char c : content) bytes.push_back(static_cast<std::byte>(c));
  return bytes;
}

inline std::string text_of(const std::filesystem::path& path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), {}};
}

inline void make_file(const std::filesystem::path& path, const std::string& content) {
  std::filesystem::create_directories(path.parent_path());
  std::ofstream(path, std::ios::binary) << content;
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
