#include "platform/System.h"

namespace norvo {

std::filesystem::path executable_folder() {
  std::error_code error;
  return std::filesystem::read_symlink("/proc/self/exe", error).parent_path();
}

}  // namespace norvo
