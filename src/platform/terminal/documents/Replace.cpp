#include "platform/terminal/documents/Replace.h"

namespace norvo {

std::string replaced(std::string_view text, std::string_view from, std::string_view to) {
  std::string result;
  for (;;) {
    const std::size_t found = text.find(from);
    result += text.substr(0, found);
    if (found == std::string_view::npos) return result;
    result += to;
    text.remove_prefix(found + from.size());
  }
}

}  // namespace norvo
