// Hexadecimal digits as signature tables use them: no digit is ever rejected, a bad one counts as
// 0. Any thread.
#pragma once

#include <cstdint>

#include "util/Text.h"

namespace norvo {

// 0 to 15 from the first character of `text`, the rest being ignored. Only the low 8 bits of the
// character count, so a non-Latin character whose low byte is a digit's code maps like that digit.
// `text` must not be empty.
std::int32_t hex2dec(TextView text);

// The digits of `text` as one number, modulo 2 to the 32nd. Empty gives 0; there is no prefix: "0x"
// adds two zeros.
std::uint32_t hex2int(TextView text);

}  // namespace norvo
