// A program that starts as the one with the window does, and reports which rights it then has.
//
// Resources/plan.json of its bundle says what it tries:
//   report, final_report   files for what it finds
//   proceed                the file that it waits for between the two
//   open                   paths that it tries with its own right and through the opener
//   packets                hexadecimal packets that it sends to the opener as they are
#include <fcntl.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <chrono>
#include <filesystem>
#include <functional>
#include <nlohmann/json.hpp>
#include <string>
#include <thread>

#include "elevation/ProbeReport.h"
#include "platform/Start.h"
#include "platform/linux/OpenerProtocol.h"
#include "platform/linux/PacketSocket.h"

extern char** environ;

namespace {

namespace fs = std::filesystem;
using Json = nlohmann::json;
using norvo::DeviceOpener;
using norvo::UniqueFd;
using norvo::test::open_alone;
using norvo::test::own_status;
using norvo::test::write_report;

constexpr int application_status = 42;
constexpr std::chrono::seconds patience{60};

Json error_or_zero(bool worked) {
  return worked ? 0 : errno;
}

Json own_environment() {
  Json variables = Json::object();
  for (char** entry = environ; *entry != nullptr; ++entry) {
    const std::string text = *entry;
    const std::size_t equals = text.find('=');
    variables[text.substr(0, equals)] = text.substr(equals + 1);
  }
  return variables;
}

// The lowest descriptor for which `is_wanted` holds; -1 when there is none.
int find_descriptor(const std::function<bool(int)>& is_wanted) {
  for (int fd = 0; fd < 256; ++fd) {
    if (is_wanted(fd)) return fd;
  }
  return -1;
}

bool is_block_device(int fd) {
  struct stat status {};
  return fstat(fd, &status) == 0 && S_ISBLK(status.st_mode);
}

bool is_packet_socket(int fd) {
  int type = 0;
  socklen_t size = sizeof type;
  return getsockopt(fd, SOL_SOCKET, SO_TYPE, &type, &size) == 0 && type == SOCK_SEQPACKET;
}

// What can be done with the descriptor that a device was opened with.
Json abuse_of_descriptor() {
  const int fd = find_descriptor(is_block_device);
  const std::string name = "/proc/self/fd/" + std::to_string(fd);
  const UniqueFd writable(open(name.c_str(), O_WRONLY | O_CLOEXEC));
  const int reopen_error = writable ? 0 : errno;
  const int flags = fcntl(fd, F_GETFL);
  const Json write_error = error_or_zero(pwrite(fd, "overwritten", 11, 0) == 11);
  return {{"access", flags & O_ACCMODE},
          {"close_on_exec", (fcntl(fd, F_GETFD) & FD_CLOEXEC) != 0},
          {"write_error", write_error},
          {"reopen_error", reopen_error}};
}

Json open_through(DeviceOpener& opener, const std::string& path) {
  const norvo::OpenedDevice opened = opener.open(path);
  if (opened.device == nullptr) return {{"error", opened.error}};
  std::string bytes(norvo::sector_size, '\0');
  const std::int64_t got =
      opened.device->read_block(0, std::as_writable_bytes(std::span(bytes.data(), bytes.size())));
  return {{"error", 0},
          {"got", got},
          {"bytes", bytes.substr(0, 16)},
          {"descriptor", abuse_of_descriptor()}};
}

std::string bytes_of(const std::string& hexadecimal) {
  std::string bytes;
  for (std::size_t i = 0; i + 1 < hexadecimal.size(); i += 2) {
    bytes += static_cast<char>(std::stoi(hexadecimal.substr(i, 2), nullptr, 16));
  }
  return bytes;
}

// A packet with a descriptor that nobody wants, and what the opener makes of it.
Json send_as_it_is(const std::string& hexadecimal) {
  const int socket = find_descriptor(is_packet_socket);
  if (!norvo::send_packet(socket, bytes_of(hexadecimal), STDIN_FILENO)) return "not sent";
  const norvo::Packet answer = norvo::receive_packet(socket, norvo::answer_size);
  const std::optional<int> error = norvo::decode_answer(answer.bytes);
  return {{"error", error.value_or(-1)}, {"descriptor", static_cast<bool>(answer.fd)}};
}

bool wait_for(const fs::path& file) {
  const auto end = std::chrono::steady_clock::now() + patience;
  while (!fs::exists(file)) {
    if (std::chrono::steady_clock::now() > end) return false;
    std::this_thread::sleep_for(std::chrono::milliseconds(20));
  }
  return true;
}

int probe(int argc, char** argv, DeviceOpener& opener) {
  const Json plan = norvo::test::read_plan();
  Json report{{"pid", getpid()},
              {"arguments", std::vector<std::string>(argv + 1, argv + argc)},
              {"folder", fs::current_path().native()},
              {"status", own_status()},
              {"environment", own_environment()},
              {"secret_file", open_alone("/etc/shadow")}};
  report["becoming_root"] = error_or_zero(setuid(0) == 0);
  for (const std::string path : plan["open"]) {
    report["alone"][path] = open_alone(path);
    report["opener"][path] = open_through(opener, path);
  }
  for (const std::string packet : plan["packets"]) {
    if (find_descriptor(is_packet_socket) < 0) break;
    report["packets"].push_back(send_as_it_is(packet));
  }
  write_report(plan["report"].get<std::string>(), report);
  if (!wait_for(plan["proceed"].get<std::string>())) return 1;
  Json again = Json::object();
  for (const std::string path : plan["open"]) again[path] = open_through(opener, path);
  write_report(plan["final_report"].get<std::string>(), again);
  return application_status;
}

}  // namespace

int main(int argc, char** argv) {
  return norvo::start_program(argc, argv, probe);
}
