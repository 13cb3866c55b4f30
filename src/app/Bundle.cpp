#include "app/Bundle.h"

namespace norvo {
namespace {

constexpr std::string_view executables = "/Contents/MacOS";

std::string_view without_trailing_slashes(std::string_view path) {
  while (path.size() > 1 && path.back() == '/') path.remove_suffix(1);
  return path;
}

}  // namespace

std::string last_path_component(std::string_view path) {
  path = without_trailing_slashes(path);
  const std::size_t slash = path.rfind('/');
  if (slash == std::string_view::npos || path.size() == 1) return std::string(path);
  return std::string(path.substr(slash + 1));
}

std::string append_path_component(std::string_view path, std::string_view component) {
  while (component.starts_with('/')) component.remove_prefix(1);
  std::string joined(without_trailing_slashes(path));
  if (!joined.empty() && joined.back() != '/') joined += '/';
  joined += component;
  return std::string(without_trailing_slashes(joined));
}

std::string delete_path_extension(std::string_view path) {
  path = without_trailing_slashes(path);
  const std::string name = last_path_component(path);
  const std::size_t full_stop = name.rfind('.');
  if (full_stop == std::string::npos || full_stop == 0) return std::string(path);
  return std::string(path.substr(0, path.size() - (name.size() - full_stop)));
}

std::string main_bundle_path(std::string_view executable_folder) {
  const std::string_view folder = without_trailing_slashes(executable_folder);
  const bool in_a_bundle = folder.ends_with(executables) && folder.size() > executables.size();
  return std::string(in_a_bundle ? folder.substr(0, folder.size() - executables.size()) : folder);
}

std::string named_executable(std::string_view bundle_path) {
  const std::string folder = append_path_component(bundle_path, "Contents/MacOS/");
  return append_path_component(folder, last_path_component(bundle_path));
}

}  // namespace norvo
