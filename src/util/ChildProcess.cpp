#include "util/ChildProcess.h"

#include <fcntl.h>
#include <signal.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <charconv>

#include "util/DescriptorPair.h"

// Some systems declare it in no header.
extern "C" char** environ;  // NOLINT(readability-redundant-declaration)

namespace norvo {
namespace {

// This process's descriptors beyond the standard streams that a child would inherit.
std::vector<int> inheritable_descriptors() {
  std::vector<int> descriptors;
  std::error_code error;
  for (std::filesystem::directory_iterator entry("/dev/fd", error), end; !error && entry != end;
       entry.increment(error)) {
    const std::string name = entry->path().filename().native();
    int fd = -1;
    std::from_chars(name.data(), name.data() + name.size(), fd);
    const int flags = fd > STDERR_FILENO ? fcntl(fd, F_GETFD) : -1;
    if (flags >= 0 && (flags & FD_CLOEXEC) == 0) descriptors.push_back(fd);
  }
  return descriptors;
}

class FileActions {
 public:
  FileActions() { posix_spawn_file_actions_init(&actions_); }
  FileActions(const FileActions&) = delete;
  FileActions& operator=(const FileActions&) = delete;
  ~FileActions() { posix_spawn_file_actions_destroy(&actions_); }

  void use_null_device(int stream, int mode) {
    posix_spawn_file_actions_addopen(&actions_, stream, "/dev/null", mode, 0);
  }
  void use(int fd, int stream) { posix_spawn_file_actions_adddup2(&actions_, fd, stream); }
  void close(int fd) { posix_spawn_file_actions_addclose(&actions_, fd); }
  const posix_spawn_file_actions_t* get() const { return &actions_; }

 private:
  posix_spawn_file_actions_t actions_{};
};

// What this process ignores or blocks, the child does not.
class Attributes {
 public:
  explicit Attributes(bool own_group) {
    posix_spawnattr_init(&attributes_);
    sigset_t signals;
    sigemptyset(&signals);
    posix_spawnattr_setsigmask(&attributes_, &signals);
    for (const int signal : {SIGHUP, SIGINT, SIGQUIT, SIGPIPE, SIGTERM, SIGCHLD}) {
      sigaddset(&signals, signal);
    }
    posix_spawnattr_setsigdefault(&attributes_, &signals);
    posix_spawnattr_setpgroup(&attributes_, 0);
    const int group = own_group ? POSIX_SPAWN_SETPGROUP : 0;
    posix_spawnattr_setflags(
        &attributes_, static_cast<short>(POSIX_SPAWN_SETSIGMASK | POSIX_SPAWN_SETSIGDEF | group));
  }
  Attributes(const Attributes&) = delete;
  Attributes& operator=(const Attributes&) = delete;
  ~Attributes() { posix_spawnattr_destroy(&attributes_); }

  const posix_spawnattr_t* get() const { return &attributes_; }

 private:
  posix_spawnattr_t attributes_{};
};

std::vector<char*> pointers_to(std::vector<std::string>& texts) {
  std::vector<char*> pointers;
  pointers.reserve(texts.size() + 1);
  for (std::string& text : texts) pointers.push_back(text.data());
  pointers.push_back(nullptr);
  return pointers;
}

int spawn(const ChildTask& task, const FileActions& actions, pid_t& pid) {
  std::vector<std::string> arguments = task.arguments;
  arguments.insert(arguments.begin(), task.executable.native());
  std::vector<std::string> environment = task.environment.value_or(std::vector<std::string>());
  const std::vector<char*> own_environment = pointers_to(environment);
  return posix_spawn(&pid, task.executable.c_str(), actions.get(), Attributes(task.own_group).get(),
                     pointers_to(arguments).data(),
                     task.environment ? own_environment.data() : environ);
}

}  // namespace

StartedChild start_child(const ChildTask& task) {
  if (!task.executable.is_absolute()) return {.pid = -1, .output = {}, .error = EINVAL};
  // In the child they become standard streams.
  const bool needs_input = task.input == ChildTask::Input::fresh_pipe;
  DescriptorPair output = make_pipe();
  const DescriptorPair input = output && needs_input ? make_pipe() : DescriptorPair();
  if (!output || (needs_input && !input)) return {.pid = -1, .output = {}, .error = errno};

  FileActions actions;
  if (task.input == ChildTask::Input::descriptor) {
    actions.use(task.input_descriptor, STDIN_FILENO);
  } else if (input) {
    actions.use(input.first.get(), STDIN_FILENO);
  } else {
    actions.use_null_device(STDIN_FILENO, O_RDONLY);
  }
  actions.use(output.second.get(), STDOUT_FILENO);
  if (task.errors == ChildTask::Errors::with_output) {
    actions.use(STDOUT_FILENO, STDERR_FILENO);
  } else {
    actions.use_null_device(STDERR_FILENO, O_WRONLY);
  }

  StartedChild child;
  {
    const std::unique_lock whole_pairs = hold_descriptor_pairs();
    for (const int fd : inheritable_descriptors()) actions.close(fd);
    child.error = spawn(task, actions, child.pid);
  }
  if (child.error != 0) return {.pid = -1, .output = {}, .error = child.error};
  child.output = std::move(output.first);
  return child;
}

void keep_ended_children() {
  struct sigaction action {};
  action.sa_handler = SIG_DFL;
  sigemptyset(&action.sa_mask);
  sigaction(SIGCHLD, &action, nullptr);
}

int wait_for_child(pid_t pid) {
  int status = 0;
  while (waitpid(pid, &status, 0) < 0) {
    if (errno != EINTR) return -1;
  }
  return status;
}

}  // namespace norvo
