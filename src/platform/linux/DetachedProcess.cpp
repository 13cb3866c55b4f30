#include "platform/linux/DetachedProcess.h"

#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>

#include "platform/linux/Descriptors.h"

namespace norvo {
namespace {

constexpr int cannot_run = 127;

[[noreturn]] void stand_by(char* const* argv, const std::vector<std::string>& left_out) {
  setsid();
  const bool quiet = put_null_on_standard_streams();
  close_all_but_standard_streams();
  if (!quiet) _exit(cannot_run);
  const pid_t child = fork();
  if (child == 0) {
    for (const std::string& name : left_out) {
      unsetenv(name.c_str());  // NOLINT(concurrency-mt-unsafe)
    }
    execv(argv[0], argv);
    _exit(cannot_run);
  }
  while (child > 0 && waitpid(child, nullptr, 0) < 0 && errno == EINTR) continue;
  _exit(0);
}

}  // namespace

int start_detached(const std::vector<std::string>& command,
                   const std::vector<std::string>& left_out) {
  std::vector<std::string> words = command;
  std::vector<char*> argv;
  argv.reserve(words.size() + 1);
  for (std::string& word : words) argv.push_back(word.data());
  argv.push_back(nullptr);
  const pid_t parent = fork();
  if (parent < 0) return errno;
  if (parent == 0) stand_by(argv.data(), left_out);
  return 0;
}

}  // namespace norvo
