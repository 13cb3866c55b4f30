// The one place where diagnostic texts go.
#pragma once

#include "util/Text.h"

namespace norvo {

// Discards `message`. One function on purpose: a build that wants to see diagnostics routes them
// here. Any thread.
void Show_NSLog_Message(TextView message);

// Reports a programming error: what a caller had to see to, as `condition` says it, does not hold.
// Any thread; the caller goes on.
inline void report_violation(TextView condition) {
  Show_NSLog_Message(u"Invalid parameter not satisfying: " + Text(condition));
}

}  // namespace norvo
