#include "platform/decoder/HelperInput.h"

#include <fcntl.h>
#include <signal.h>
#include <sys/stat.h>

namespace norvo {

// O_NONBLOCK: opening a pipe must not wait for its other end.
UniqueFd open_regular_file(const std::filesystem::path& path) {
  UniqueFd file(open(path.c_str(), O_RDONLY | O_NOFOLLOW | O_CLOEXEC | O_NONBLOCK | O_NOCTTY));
  struct stat status {};
  if (!file || fstat(file.get(), &status) != 0 || !S_ISREG(status.st_mode)) return {};
  return file;
}

void block_broken_pipe_signal() {
  sigset_t signals;
  sigemptyset(&signals);
  sigaddset(&signals, SIGPIPE);
  pthread_sigmask(SIG_BLOCK, &signals, nullptr);
}

}  // namespace norvo
