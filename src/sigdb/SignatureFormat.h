// The signature file's format, for all who read one: the loader, the checker and the matcher.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>

#include "util/Text.h"

namespace norvo {

// Bytes. A larger file is not read.
inline constexpr std::uintmax_t largest_signature_file = 64U << 20U;

inline constexpr std::size_t fields_per_record = 6;

// A header is looked for at the byte positions 1 to 507 of a sector; a record may name others,
// which are never tried.
inline constexpr std::int64_t last_header_position = 507;

struct SignatureField {
  Text value;              // what follows the first colon, trimmed
  bool is_header = false;  // the line begins exactly "Header :"
};

// The field of a line, without its line feed; nothing when the line has no colon.
std::optional<SignatureField> signature_field(TextView line);

}  // namespace norvo
