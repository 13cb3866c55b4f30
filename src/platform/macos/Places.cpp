#include <mach-o/dyld.h>

#include <string>

#include "platform/System.h"

namespace norvo {

std::filesystem::path executable_folder() {
  std::uint32_t size = 0;
  _NSGetExecutablePath(nullptr, &size);
  std::string path(size, '\0');
  if (_NSGetExecutablePath(path.data(), &size) != 0) return {};
  std::error_code error;
  return std::filesystem::canonical(path.c_str(), error).parent_path();
}

}  // namespace norvo
