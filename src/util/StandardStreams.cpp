#include "util/StandardStreams.h"

#include <fcntl.h>
#include <unistd.h>

namespace norvo {

bool complete_standard_streams() {
  for (int fd = STDIN_FILENO; fd <= STDERR_FILENO; ++fd) {
    // The lowest free descriptor is taken, and all below this one are in use. Children inherit it.
    if (fcntl(fd, F_GETFD) < 0 && open("/dev/null", O_RDWR) != fd) return false;  // NOLINT
  }
  return true;
}

}  // namespace norvo
