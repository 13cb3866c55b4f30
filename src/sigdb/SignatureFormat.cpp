#include "sigdb/SignatureFormat.h"

namespace norvo {

std::optional<SignatureField> signature_field(TextView line) {
  const std::size_t colon = line.find(u':');
  if (colon == TextView::npos) return std::nullopt;
  return SignatureField{.value = Trim_Str(line.substr(colon + 1)),
                        .is_header = line.substr(0, colon + 1) == u"Header :"};
}

}  // namespace norvo
