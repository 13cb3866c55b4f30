// Letter case of texts. Independent of the user's locale, so that a signature file means the same
// on every machine. Both functions may be called from any thread.
#pragma once

#include "util/Text.h"

namespace norvo {

// The upper-case form, letter by letter; "ß" becomes "SS".
Text upper_case(TextView text);

// A form in which letters that differ only in case are equal. For comparing, not for showing.
Text fold_case(TextView text);

}  // namespace norvo
