#include "util/Hexadecimal.h"

#include <cassert>

namespace norvo {

std::int32_t hex2dec(TextView text) {
  assert(!text.empty());
  const auto c = static_cast<unsigned char>(text.front() & 0xFFU);
  if (c >= '1' && c <= '9') return c - '0';
  if (c >= 'A' && c <= 'F') return c - 'A' + 10;
  if (c >= 'a' && c <= 'f') return c - 'a' + 10;
  return 0;
}

std::uint32_t hex2int(TextView text) {
  // The weight of every digit beyond the eighth is a multiple of 2 to the 32nd, so shifting in
  // 32 bits gives the same sum as powers of 16 cut to 32 bits.
  std::uint32_t value = 0;
  for (const char16_t digit : text) {
    value = (value << 4U) + static_cast<std::uint32_t>(hex2dec(TextView(&digit, 1)));
  }
  return value;
}

}  // namespace norvo
