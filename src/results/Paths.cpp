#include "results/Paths.h"

#include <optional>

namespace norvo {

std::filesystem::path trimmed_path(const std::filesystem::path& path) {
  const std::optional<Text> text = text_from_utf8(path.native());
  return text ? std::filesystem::path(utf8_from_text(Trim_Str(*text))) : path;
}

Text extension_of(const std::filesystem::path& path) {
  const Text trimmed = Trim_Str(text_from_utf8_lossy(path.native()));
  const std::size_t slash = trimmed.rfind(u'/');
  const TextView name = TextView(trimmed).substr(slash == Text::npos ? 0 : slash + 1);
  const std::size_t stop = name.rfind(u'.');
  return stop == TextView::npos ? Text() : Text(name.substr(stop + 1));
}

}  // namespace norvo
