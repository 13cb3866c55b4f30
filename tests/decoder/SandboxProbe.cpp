// Tries one thing, with all rights or with those of a decoder or player, for the tests of the
// sandboxes; part of no product.
//
//   norvo-sandbox-probe decoder|player|free ACTION FOLDER
//
// Ends with 10 when the thing could be done, with 11 when it was refused; the system may also kill
// the process for trying.
#include <fcntl.h>
#include <signal.h>
#include <sys/mman.h>
#include <sys/ptrace.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdint>
#include <cstdlib>
#include <functional>
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

bool try_it(const std::string& action, const std::string& folder, int opened) {
  const std::string file = folder + "/file";
  const std::map<std::string, std::function<bool()>> actions{
      {"compute", compute},
      {"read-file", [&] { return open(file.c_str(), O_RDONLY) >= 0; }},
      {"write-file", [&] { return open(file.c_str(), O_WRONLY) >= 0; }},
      {"create-file", [&] { return open((folder + "/new").c_str(), O_CREAT | O_RDWR, 0600) >= 0; }},
      {"remove-file", [&] { return unlink(file.c_str()) == 0; }},
      {"rename-file", [&] { return rename(file.c_str(), (folder + "/other").c_str()) == 0; }},
      {"make-folder", [&] { return mkdir((folder + "/sub").c_str(), 0700) == 0; }},
      {"change-mode", [&] { return chmod(file.c_str(), 0777) == 0; }},
      {"write-opened", [&] { return write_to_descriptor(opened); }},
      {"truncate-opened", [&] { return ftruncate(opened, 1) == 0; }},
      {"socket", [] { return socket(AF_INET, SOCK_STREAM, 0) >= 0; }},
      {"local-socket", [] { return socket(AF_UNIX, SOCK_STREAM, 0) >= 0; }},
      {"fork", start_child_process},
      {"execute", [&] { return run_program(folder); }},
      {"execute-shell", run_shell},
      {"trace", [] { return ptrace(PTRACE_TRACEME, 0, nullptr, nullptr) == 0; }},
      {"signal", [] { return kill(getppid(), 0) == 0; }},
      {"map-code", [] { return map_with(PROT_READ | PROT_EXEC); }},
      {"make-code", make_memory_executable},
      {"read-library", [] { return open("/etc/passwd", O_RDONLY) >= 0; }},
      {"too-much-memory", [] { return std::malloc(2 * memory) != nullptr; }},
  };
  return actions.at(action)();
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 4) return 1;
  const std::string folder = argv[3];
  // A descriptor as a careless caller might leave it open.
  const int opened = open((folder + "/file").c_str(), O_RDWR);
  const std::string rights = argv[1];
  if (rights != "free") norvo::close_other_descriptors();
  if (rights == "decoder" && !norvo::give_up_rights({.memory = memory, .cpu_seconds = 60}))
    return 2;
  if (rights == "player" && !norvo::give_up_player_rights()) return 2;
  _exit(try_it(argv[2], folder, opened) ? done : refused);
}
