#include "util/Diagnostics.h"

namespace norvo {

void Show_NSLog_Message(TextView /*message*/) {
}

}  // namespace norvo
