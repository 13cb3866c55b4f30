// The destination as a map in memory: folders, files, and streams opened with mode "wb+".
#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <string>

#include "PlainDevice.h"
#include "PlainSearch.h"

namespace plain {

// Joins as path components are joined: an empty component adds nothing.
std::string join(const std::string& folder, const std::string& component);
std::string parent_of(const std::string& path);
std::string last_component(const std::string& path);

// Two streams on one path share the file and keep their own positions.
class OutputStream {
 public:
  OutputStream(std::shared_ptr<Bytes> file, std::optional<std::uint64_t>& writes_left)
      : file_(std::move(file)), writes_left_(writes_left) {}

  // The number of items written, 1 or 0.
  std::size_t write(const Sector& sector);

  // False when an earlier write did not reach the drive.
  bool flush_and_close() const { return !failed_; }

 private:
  std::shared_ptr<Bytes> file_;
  std::optional<std::uint64_t>& writes_left_;
  std::size_t position_ = 0;
  bool failed_ = false;
};

class FileSystem {
 public:
  explicit FileSystem(const Search& search);

  // True when anything exists at the path, or the folder and its missing parents could be made.
  bool Create_Folder(const std::string& path);

  // Null when the path is a folder or its parent is none.
  std::unique_ptr<OutputStream> open_wb_plus(const std::string& path);

  std::map<std::string, Bytes> files() const;
  const std::set<std::string>& folders() const { return folders_; }

 private:
  bool is_folder(const std::string& path) const;

  std::string destination_;
  std::map<std::string, std::shared_ptr<Bytes>> files_;
  std::set<std::string> folders_;
  std::optional<std::uint64_t> writes_left_;
};

}  // namespace plain
