// Which descriptors a process that changes its rights keeps. Only in a process without other
// threads.
#pragma once

namespace norvo {

void close_all_but_standard_streams();

// Puts /dev/null on descriptors 0, 1 and 2; false when that failed.
[[nodiscard]] bool put_null_on_standard_streams();

}  // namespace norvo
