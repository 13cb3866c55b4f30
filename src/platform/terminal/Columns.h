// How wide a text is on a terminal. Independent of the person's locale. Any thread.
#pragma once

#include <cstddef>
#include <string>

#include "util/Text.h"

namespace norvo {

// The columns that `text` takes: two for each letter of Chinese, Japanese and Korean and for most
// pictures, none for a mark that stands on the letter before it, one for all else. Without
// characters that steer a terminal (displayable()).
std::size_t display_columns(TextView text);

// `text` as UTF-8 with blanks behind it, or in front of it, up to `width` columns.
std::string filled_behind(TextView text, std::size_t width);
std::string filled_in_front(TextView text, std::size_t width);

}  // namespace norvo
