#include "platform/LogLines.h"

#include "util/Text.h"

namespace norvo {
namespace {

// One of the bytes behind the first one of a character.
bool is_continuation(char c) {
  return (static_cast<unsigned char>(c) & 0xC0U) == 0x80U;
}

// Takes the beginning of a character that does not fit away.
void drop_begun_character(std::string& line) {
  while (!line.empty() && is_continuation(line.back())) line.pop_back();
  if (!line.empty()) line.pop_back();
}

}  // namespace

LogLines::~LogLines() {
  end_line();
}

LogLines::int_type LogLines::overflow(int_type c) {
  if (traits_type::eq_int_type(c, traits_type::eof())) return traits_type::not_eof(c);
  const char written = traits_type::to_char_type(c);
  if (written == '\n') {
    end_line();
  } else {
    add(written);
  }
  return c;
}

void LogLines::add(char c) {
  if (is_cut_) return;
  if (line_.size() < longest_line) {
    line_ += c;
    return;
  }
  is_cut_ = true;
  if (is_continuation(c)) drop_begun_character(line_);
}

void LogLines::end_line() {
  if (!line_.empty() || is_cut_) {
    sink_(utf8_from_text(displayable(text_from_utf8_lossy(line_))) + (is_cut_ ? "..." : ""));
  }
  line_.clear();
  is_cut_ = false;
}

}  // namespace norvo
