// Tries one thing, with all rights or with those of a decoder or player, for the tests of the
// sandboxes; part of no product. A `playing` player has what a player has when its movie comes; its
// thread that tries is older than that.
//
//   norvo-sandbox-probe decoder|player|playing|free ACTION FOLDER
//
// Ends with 10 when the thing could be done, with 11 when it was refused; the system may also kill
// the process for trying.
#include <errno.h>
#include <fcntl.h>
#include <sched.h>
#include <signal.h>
#include <sys/ioctl.h>
#include <sys/mman.h>
#include <sys/ptrace.h>
#include <sys/resource.h>
#include <sys/shm.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <sys/un.h>
#include <sys/wait.h>
#include <sys/xattr.h>
#include <unistd.h>

#include <array>
#include <cstdint>
#include <cstdlib>
#include <functional>
#include <future>
#include <map>
#include <string>
#include <thread>
#include <vector>

#include "platform/decoder/Sandbox.h"
#include "platform/player/PlayerSandbox.h"

namespace {

constexpr int done = 10;
constexpr int refused = 11;
constexpr std::uint64_t memory = std::uint64_t{512} << 20U;

bool map_with(int protection) {
  void* const place = mmap(nullptr, 4096, protection, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
  return place != MAP_FAILED;
}

bool make_memory_executable() {
  void* const place =
      mmap(nullptr, 4096, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
  return place != MAP_FAILED && mprotect(place, 4096, PROT_READ | PROT_EXEC) == 0;
}

bool start_child_process() {
  const pid_t child = fork();
  if (child == 0) _exit(0);
  return child > 0 && waitpid(child, nullptr, 0) == child;
}

bool run_program(const std::string& folder) {
  const std::string name = folder + "/program";
  execl(name.c_str(), name.c_str(), nullptr);
  return false;
}

bool run_shell() {
  execl("/bin/sh", "sh", "-c", "exit 10", nullptr);
  return false;
}

// What decoding needs must still work.
bool compute() {
  int sum = 0;
  std::thread thread([&sum] {
    const std::vector<int> numbers(10'000'000, 1);
    for (const int number : numbers) sum += number;
  });
  thread.join();
  return sum == 10'000'000;
}

bool write_to_descriptor(int descriptor) {
  return write(descriptor, "x", 1) == 1;
}

// What a process may have been given before it gives up its rights.
struct Given {
  int careless = -1;  // the file, for writing, by a caller that left it open
  int file = -1;      // the file, for reading
  int parent = -1;    // the parent process
  int socket = -1;
};

using Actions = std::map<std::string, std::function<bool()>>;

// A filter must see through bits that the kernel does not look at.
constexpr unsigned long unseen_bits = 1UL << 40U;

bool queue_signal(pid_t process) {
  siginfo_t information{};
  information.si_code = SI_QUEUE;
  return syscall(SYS_rt_tgsigqueueinfo, process, process, 0, &information) == 0;
}

bool set_affinity(pid_t process) {
  cpu_set_t set;
  return sched_getaffinity(process, sizeof set, &set) == 0 &&
         sched_setaffinity(process, sizeof set, &set) == 0;
}

bool set_priority(id_t process) {
  return setpriority(PRIO_PROCESS, process, getpriority(PRIO_PROCESS, process)) == 0;
}

// Not every file system has attributes.
bool was_allowed(int result) {
  return result == 0 || errno == ENOTSUP || errno == ENODATA;
}

bool send_to_unconnected() {
  std::array<int, 2> ends{-1, -1};
  return socketpair(AF_UNIX, SOCK_DGRAM, 0, ends.data()) == 0;
}

bool connect_somewhere(int socket) {
  // Nobody listens there, which is told to those who may ask.
  sockaddr_un address{.sun_family = AF_UNIX, .sun_path = "/nobody/listens/here"};
  return connect(socket, reinterpret_cast<const sockaddr*>(&address), sizeof address) == 0 ||
         errno == ENOENT;
}

Actions about_files(const std::string& folder, const Given& given) {
  const std::string file = folder + "/file";
  return {
      {"read-file", [=] { return open(file.c_str(), O_RDONLY) >= 0; }},
      {"write-file", [=] { return open(file.c_str(), O_WRONLY) >= 0; }},
      {"create-file", [=] { return open((folder + "/new").c_str(), O_CREAT | O_RDWR, 0600) >= 0; }},
      {"remove-file", [=] { return unlink(file.c_str()) == 0; }},
      {"rename-file", [=] { return rename(file.c_str(), (folder + "/other").c_str()) == 0; }},
      {"make-folder", [=] { return mkdir((folder + "/sub").c_str(), 0700) == 0; }},
      {"change-mode", [=] { return chmod(file.c_str(), 0777) == 0; }},
      {"write-opened", [=] { return write_to_descriptor(given.careless); }},
      {"truncate-opened", [=] { return ftruncate(given.careless, 1) == 0; }},
      {"change-mode-given", [=] { return fchmod(given.file, 0777) == 0; }},
      {"change-owner-given", [=] { return fchown(given.file, getuid(), getgid()) == 0; }},
      {"change-owner-of-link", [=] { return lchown(file.c_str(), getuid(), getgid()) == 0; }},
      {"set-times-given", [=] { return futimens(given.file, nullptr) == 0; }},
      {"set-attribute", [=] { return was_allowed(lsetxattr(file.c_str(), "user.a", "", 0, 0)); }},
      {"set-attribute-given",
       [=] { return was_allowed(fsetxattr(given.file, "user.a", "", 0, 0)); }},
      {"remove-attribute", [=] { return was_allowed(removexattr(file.c_str(), "user.b")); }},
      {"remove-attribute-given", [=] { return was_allowed(fremovexattr(given.file, "user.b")); }},
      {"read-library", [] { return open("/etc/passwd", O_RDONLY) >= 0; }},
  };
}

Actions about_processes(const std::string& folder, const Given& given) {
  const pid_t parent = getppid();
  return {
      {"fork", start_child_process},
      {"execute", [=] { return run_program(folder); }},
      {"execute-shell", run_shell},
      {"trace", [] { return ptrace(PTRACE_TRACEME, 0, nullptr, nullptr) == 0; }},
      {"signal", [=] { return kill(parent, 0) == 0; }},
      {"signal-thread", [=] { return syscall(SYS_tgkill, parent, parent, 0) == 0; }},
      {"signal-itself", [] { return syscall(SYS_tgkill, getpid(), getpid(), 0) == 0; }},
      {"queue-signal", [=] { return queue_signal(parent); }},
      {"signal-given",
       [=] { return syscall(SYS_pidfd_send_signal, given.parent, 0, nullptr, 0) == 0; }},
      {"own-file-by-other",
       [=] { return syscall(SYS_fcntl, given.file, F_SETOWN | unseen_bits, parent) == 0; }},
      {"choose-signal",
       [=] { return syscall(SYS_fcntl, given.file, F_SETSIG | unseen_bits, SIGTERM) == 0; }},
      {"own-socket-by-other",
       [=] { return syscall(SYS_ioctl, given.socket, FIOSETOWN | unseen_bits, &parent) == 0; }},
      {"limit-other", [=] { return prlimit(parent, RLIMIT_CORE, nullptr, nullptr) == 0; }},
      {"limit-itself", [] { return prlimit(0, RLIMIT_CORE, nullptr, nullptr) == 0; }},
      {"place-other", [=] { return set_affinity(parent); }},
      {"rank-other", [=] { return set_priority(static_cast<id_t>(parent)); }},
      {"shared-memory", [] { return shmget(IPC_PRIVATE, 4096, 0600) >= 0; }},
  };
}

Actions about_connections(const Given& given) {
  return {
      {"socket", [] { return socket(AF_INET, SOCK_STREAM, 0) >= 0; }},
      {"local-socket", [] { return socket(AF_UNIX, SOCK_STREAM, 0) >= 0; }},
      {"pair-of-sockets", send_to_unconnected},
      {"connect", [=] { return connect_somewhere(given.socket); }},
  };
}

Actions about_memory() {
  return {
      {"compute", compute},
      {"map-code", [] { return map_with(PROT_READ | PROT_EXEC); }},
      {"make-code", make_memory_executable},
      {"too-much-memory", [] { return std::malloc(2 * memory) != nullptr; }},
  };
}

std::function<bool()> attempt_of(const std::string& action, const std::string& folder,
                                 const Given& given) {
  Actions actions = about_files(folder, given);
  actions.merge(about_processes(folder, given));
  actions.merge(about_connections(given));
  actions.merge(about_memory());
  return actions.at(action);
}

// Tries with a thread that was there before the last rights were given up.
bool try_while_playing(const std::function<bool()>& attempt) {
  std::promise<void> playing;
  std::future<bool> result =
      std::async(std::launch::async, [&attempt, start = playing.get_future().share()] {
        start.wait();
        return attempt();
      });
  if (!norvo::give_up_new_connections()) _exit(2);
  playing.set_value();
  return result.get();
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 4) return 1;
  const std::string rights = argv[1];
  const std::string folder = argv[3];
  const std::string file = folder + "/file";
  Given given;
  given.careless = open(file.c_str(), O_RDWR);
  if (rights != "free") norvo::close_other_descriptors();
  given.file = open(file.c_str(), O_RDONLY);
  given.parent = static_cast<int>(syscall(SYS_pidfd_open, getppid(), 0));
  given.socket = socket(AF_UNIX, SOCK_STREAM, 0);
  // Made before: nothing but the attempt itself shall be tried without rights.
  const std::function<bool()> attempt = attempt_of(argv[2], folder, given);
  if (rights == "decoder" && !norvo::give_up_rights({.memory = memory, .cpu_seconds = 60}))
    return 2;
  const bool plays = rights == "playing";
  if ((rights == "player" || plays) && !norvo::give_up_player_rights()) return 2;
  _exit((plays ? try_while_playing(attempt) : attempt()) ? done : refused);
}
