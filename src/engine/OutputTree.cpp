#include "engine/OutputTree.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <string>
#include <system_error>
#include <vector>

#include "engine/SavingFailure.h"
#include "util/Files.h"

namespace norvo {
namespace fs = std::filesystem;
namespace {

constexpr mode_t folder_permissions = 0777;
constexpr mode_t file_permissions = 0666;

[[noreturn]] void fail(const std::string& what) {
  throw SavingFailure(what + ": " + std::generic_category().message(errno));
}

std::vector<std::string> safe_components(const fs::path& relative) {
  std::vector<std::string> components;
  if (relative.native().find('\0') != std::string::npos || relative.is_absolute()) {
    throw SavingFailure("not a path below the destination");
  }
  for (const fs::path& part : relative) {
    if (part == "..") throw SavingFailure("a path would leave the destination");
    if (!part.empty() && part != ".") components.push_back(part.native());
  }
  if (components.empty()) throw SavingFailure("an empty path");
  return components;
}

UniqueFd open_folder_at(const UniqueFd& parent, const std::string& name) {
  return UniqueFd(
      openat(parent.get(), name.c_str(), O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC));
}

UniqueFd make_and_open_folder(const UniqueFd& parent, const std::string& name) {
  UniqueFd folder = open_folder_at(parent, name);
  if (folder) return folder;
  if (errno != ENOENT) fail("cannot open folder " + name);
  if (mkdirat(parent.get(), name.c_str(), folder_permissions) != 0 && errno != EEXIST) {
    fail("cannot make folder " + name);
  }
  folder = open_folder_at(parent, name);
  if (!folder) fail("cannot make folder " + name);
  // mkdir alone subtracts the umask. Drives that know no permissions refuse this, and take files.
  static_cast<void>(fchmod(folder.get(), folder_permissions));
  return folder;
}

bool exists_and_is_no_link(const UniqueFd& parent, const std::string& name) {
  struct stat status {};
  return fstatat(parent.get(), name.c_str(), &status, AT_SYMLINK_NOFOLLOW) == 0 &&
         !S_ISLNK(status.st_mode);
}

// A planted pipe must not make the search wait, a device or a second name not receive its data.
void empty_plain_single_file(const UniqueFd& file) {
  struct stat status {};
  if (fstat(file.get(), &status) != 0) fail("cannot examine the file");
  if (!S_ISREG(status.st_mode)) throw SavingFailure("something else stands at the file's name");
  if (status.st_nlink > 1) throw SavingFailure("the file has a second name elsewhere");
  if (status.st_size != 0 && ftruncate(file.get(), 0) != 0) fail("cannot empty the file");
}

}  // namespace

UniqueFd OutputTree::open_destination() const {
  if (!Create_Folder(destination_)) fail("cannot make the destination");
  UniqueFd folder(open(destination_.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
  if (!folder) fail("cannot open the destination");
  return folder;
}

void OutputTree::make_folder(const fs::path& relative) const {
  std::vector<std::string> components = safe_components(relative);
  const std::string last = std::move(components.back());
  components.pop_back();
  UniqueFd folder = open_destination();
  for (const std::string& name : components) folder = make_and_open_folder(folder, name);
  if (!exists_and_is_no_link(folder, last)) make_and_open_folder(folder, last);
}

UniqueFd OutputTree::create_file(const fs::path& relative) const {
  std::vector<std::string> components = safe_components(relative);
  const std::string name = std::move(components.back());
  components.pop_back();
  UniqueFd folder = open_destination();
  for (const std::string& component : components) folder = make_and_open_folder(folder, component);

  UniqueFd file(openat(folder.get(), name.c_str(),
                       O_RDWR | O_CREAT | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC, file_permissions));
  if (!file) fail("cannot create " + name);
  empty_plain_single_file(file);
  return file;
}

}  // namespace norvo
