// The one place where diagnostic texts go.
#pragma once

#include "util/Text.h"

namespace norvo {

// Discards `message`. One function on purpose: a build that wants to see diagnostics routes them
// here. Any thread.
void Show_NSLog_Message(TextView message);

}  // namespace norvo
