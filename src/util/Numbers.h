// Numbers written as texts, read the forgiving way: leading white space and one sign are allowed,
// reading stops at the first other character, no digits give 0, a value out of range sticks at the
// limit. Any thread.
#pragma once

#include <cstdint>

#include "util/Text.h"

namespace norvo {

std::int64_t integer64_value(TextView text);
std::int32_t integer32_value(TextView text);

// As above, with a decimal point and an exponent as they are written in English; a value that is
// too large is infinite, and one whose exponent makes it too small is 0.
double floating_value(TextView text);

}  // namespace norvo
