#include "platform/linux/Descriptors.h"

#include <fcntl.h>
#include <unistd.h>

namespace norvo {

void close_all_but_standard_streams() {
  closefrom(STDERR_FILENO + 1);
}

bool put_null_on_standard_streams() {
  const int null = open("/dev/null", O_RDWR | O_CLOEXEC);
  if (null < 0) return false;
  for (int fd = STDIN_FILENO; fd <= STDERR_FILENO; ++fd) {
    // A descriptor that is its own copy would keep its close-on-exec mark.
    if (fd == null ? fcntl(fd, F_SETFD, 0) != 0 : dup2(null, fd) != fd) return false;
  }
  return null <= STDERR_FILENO || close(null) == 0;
}

}  // namespace norvo
