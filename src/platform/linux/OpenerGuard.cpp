#include "platform/linux/OpenerGuard.h"

#include <fcntl.h>
#include <sys/stat.h>

#include <cerrno>
#include <utility>

#include "platform/linux/MediumCheck.h"

namespace norvo {
namespace {

constexpr std::string_view device_folder = "/dev/";

bool is_plain_component(std::string_view component) {
  return !component.empty() && component != "." && component != "..";
}

std::string_view take_component(std::string_view& rest) {
  const std::string_view component = rest.substr(0, rest.find('/'));
  rest.remove_prefix(component.size());
  if (!rest.empty()) rest.remove_prefix(1);
  return component;
}

// The error of a component that was to be a folder, or the device itself, and is `status`.
int error_of(const struct stat& status, bool is_last) {
  if (S_ISLNK(status.st_mode)) return ELOOP;
  if (is_last) return S_ISBLK(status.st_mode) ? 0 : ENOTBLK;
  return S_ISDIR(status.st_mode) ? 0 : ENOTDIR;
}

// A place in the tree that is looked at without opening what is there.
struct Place {
  UniqueFd fd;
  int error = 0;
};

Place look_at(const UniqueFd& folder, const std::string& component, bool is_last) {
  Place place{UniqueFd(openat(folder.get(), component.c_str(), O_PATH | O_NOFOLLOW | O_CLOEXEC))};
  struct stat status {};
  if (!place.fd || fstat(place.fd.get(), &status) != 0) {
    place.error = errno;
  } else {
    place.error = error_of(status, is_last);
  }
  return place;
}

OpenedNode open_in(const UniqueFd& folder, const std::string& name) {
  OpenedNode node{UniqueFd(openat(folder.get(), name.c_str(),
                                  O_RDONLY | O_NOFOLLOW | O_CLOEXEC | O_NONBLOCK | O_NOCTTY))};
  struct stat status {};
  if (!node.fd || fstat(node.fd.get(), &status) != 0) return {.fd = {}, .error = errno};
  // The name may have been given to something else since it was looked at.
  const int error = S_ISBLK(status.st_mode) ? medium_error(node.fd) : ENOTBLK;
  return error == 0 ? std::move(node) : OpenedNode{.fd = {}, .error = error};
}

}  // namespace

bool is_device_path(std::string_view path) {
  if (path.size() > longest_device_path || !path.starts_with(device_folder)) return false;
  if (path.back() == '/' || path.find('\0') != std::string_view::npos) return false;
  std::string_view rest = path.substr(device_folder.size());
  while (!rest.empty()) {
    if (!is_plain_component(take_component(rest))) return false;
  }
  return true;
}

OpenedNode open_block_device(const std::string& path) {
  if (!is_device_path(path)) return {.fd = {}, .error = EACCES};
  UniqueFd folder(open("/", O_PATH | O_DIRECTORY | O_CLOEXEC));
  if (!folder) return {.fd = {}, .error = errno};
  std::string_view rest = std::string_view(path).substr(1);
  for (;;) {
    const std::string component(take_component(rest));
    const bool is_last = rest.empty();
    Place place = look_at(folder, component, is_last);
    if (place.error != 0) return {.fd = {}, .error = place.error};
    if (is_last) return open_in(folder, component);
    folder = std::move(place.fd);
  }
}

}  // namespace norvo
