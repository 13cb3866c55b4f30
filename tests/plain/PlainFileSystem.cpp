#include "PlainFileSystem.h"

#include <algorithm>

namespace plain {

std::string join(const std::string& folder, const std::string& component) {
  return component.empty() ? folder : folder + "/" + component;
}

std::string parent_of(const std::string& path) {
  const std::size_t slash = path.rfind('/');
  return slash == std::string::npos ? std::string() : path.substr(0, slash);
}

std::string last_component(const std::string& path) {
  return path.substr(path.rfind('/') + 1);
}

std::size_t OutputStream::write(const Sector& sector) {
  if (writes_left_ && *writes_left_ == 0) {
    failed_ = true;
    return 0;
  }
  if (writes_left_) {
    --*writes_left_;
  }
  if (file_->size() < position_ + sector.size()) {
    file_->resize(position_ + sector.size());
  }
  std::copy(sector.begin(), sector.end(), file_->begin() + static_cast<std::ptrdiff_t>(position_));
  position_ += sector.size();
  return 1;
}

FileSystem::FileSystem(const Search& search)
    : destination_(search.destination), writes_left_(search.sector_writes_until_full) {
  for (const std::string& folder : search.existing_folders) {
    Create_Folder(folder);
  }
  for (const auto& [path, bytes] : search.existing_files) {
    Create_Folder(parent_of(path));
    files_[path] = std::make_shared<Bytes>(bytes);
  }
}

bool FileSystem::is_folder(const std::string& path) const {
  return path == destination_ || folders_.contains(path);
}

bool FileSystem::Create_Folder(const std::string& path) {
  if (is_folder(path) || files_.contains(path)) {
    return true;
  }
  const std::string parent = parent_of(path);
  if (parent.size() < destination_.size() || !Create_Folder(parent) || !is_folder(parent)) {
    return false;
  }
  folders_.insert(path);
  return true;
}

std::unique_ptr<OutputStream> FileSystem::open_wb_plus(const std::string& path) {
  if (is_folder(path) || !is_folder(parent_of(path))) {
    return nullptr;
  }
  std::shared_ptr<Bytes>& file = files_[path];
  if (!file) {
    file = std::make_shared<Bytes>();
  }
  file->clear();
  return std::make_unique<OutputStream>(file, writes_left_);
}

std::map<std::string, Bytes> FileSystem::files() const {
  std::map<std::string, Bytes> result;
  for (const auto& [path, bytes] : files_) {
    result[path] = *bytes;
  }
  return result;
}

}  // namespace plain
