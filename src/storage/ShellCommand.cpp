#include "storage/ShellCommand.h"

#include <unistd.h>

#include <array>
#include <cerrno>
#include <string>

namespace norvo {

ChildTask taskForShellCommand(TextView command) {
  return {.executable = "/bin/sh",
          .arguments = {"-c", utf8_from_text(command)},
          .input = ChildTask::Input::null_device,
          .environment = {}};
}

Text executeShellCommandSynchronously(TextView command) {
  ChildTask task = taskForShellCommand(command);
  task.input = ChildTask::Input::fresh_pipe;
  task.errors = ChildTask::Errors::with_output;
  const StartedChild child = start_child(task);
  if (child.pid < 0) return {};

  // Where a chunk ends is chance; a character that it cuts is decoded with the next one.
  std::string output;
  std::array<char, 4096> chunk;
  while (true) {
    const ssize_t got = read(child.output.get(), chunk.data(), chunk.size());
    if (got < 0 && errno == EINTR) continue;
    if (got <= 0) break;
    output.append(chunk.data(), static_cast<std::size_t>(got));
  }
  wait_for_child(child.pid);
  return text_from_utf8_lossy(output);
}

}  // namespace norvo
