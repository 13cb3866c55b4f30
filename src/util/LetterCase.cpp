#include "util/LetterCase.h"

#include <clocale>
#include <cwctype>
#if __has_include(<xlocale.h>)
#include <xlocale.h>
#endif

namespace norvo {
namespace {

// Only the character tables of this locale are used. Systems spell its name differently; without
// any of them the plain "C" tables still serve ASCII.
locale_t unicode_locale() {
  static const locale_t locale = [] {
    for (const char* name : {"C.UTF-8", "UTF-8", "en_US.UTF-8", "C"}) {
      if (locale_t found = newlocale(LC_CTYPE_MASK, name, nullptr)) return found;
    }
    return locale_t{};
  }();
  return locale;
}

template <typename Mapping>
Text map_letters(TextView text, Mapping mapping) {
  Text result;
  result.reserve(text.size());
  for (const char16_t unit : text) {
    const bool surrogate = unit >= 0xD800 && unit <= 0xDFFF;
    result.push_back(surrogate ? unit : static_cast<char16_t>(mapping(unit)));
  }
  return result;
}

}  // namespace

Text upper_case(TextView text) {
  const Text upper = map_letters(text, [](wint_t c) { return towupper_l(c, unicode_locale()); });
  return Replace_char_in_string(upper, u"\u00DF", u"SS");
}

Text fold_case(TextView text) {
  return map_letters(
      text, [](wint_t c) { return towlower_l(towupper_l(c, unicode_locale()), unicode_locale()); });
}

}  // namespace norvo
