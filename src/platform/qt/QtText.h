// Text to and from the toolkit's strings; both are UTF-16. Any thread.
#pragma once

#include <QString>
#include <filesystem>

#include "util/Text.h"

namespace norvo {

inline QString to_qt(TextView text) {
  return QString(reinterpret_cast<const QChar*>(text.data()), static_cast<qsizetype>(text.size()));
}

inline Text to_text(const QString& text) {
  return Text(reinterpret_cast<const char16_t*>(text.utf16()),
              static_cast<std::size_t>(text.size()));
}

// A path as the system spells it, both ways; bytes that are no UTF-8 are replaced.
inline QString path_to_qt(const std::filesystem::path& path) {
  return to_qt(text_from_utf8_lossy(path.string()));
}

inline std::filesystem::path to_path(const QString& path) {
  return std::filesystem::path(path.toStdString());
}

// What may be shown of a text that strangers wrote.
inline QString shown(const QString& text) {
  return to_qt(displayable(to_text(text)));
}

}  // namespace norvo
