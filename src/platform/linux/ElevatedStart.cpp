#include "platform/linux/ElevatedStart.h"

#include <sys/prctl.h>
#include <unistd.h>

#include <cstdlib>
#include <memory>
#include <optional>
#include <string>
#include <utility>

#include "platform/System.h"
#include "platform/linux/AssistedDeviceOpener.h"
#include "platform/linux/Descriptors.h"
#include "platform/linux/DeviceOpenerProcess.h"
#include "platform/linux/PacketSocket.h"
#include "platform/linux/Person.h"
#include "platform/linux/Privileges.h"
#include "platform/linux/RemoteDeviceOpener.h"
#include "platform/linux/Session.h"

namespace norvo {
namespace {

[[noreturn]] void be_the_opener(SocketPair sockets) {
  static_cast<void>(sockets.first.close());
  // Signals for the person's session and its terminals are not for the opener.
  setsid();
  prctl(PR_SET_NAME, "norvo-opener", 0, 0, 0);
  if (!put_null_on_standard_streams() || chdir("/") != 0) _exit(1);
  become_reader_of_everything();
  answer_device_requests(std::move(sockets.second));
  _exit(0);
}

std::optional<std::string> value_of(const char* variable) {
  const char* const value = getenv(variable);  // NOLINT(concurrency-mt-unsafe)
  return value == nullptr ? std::nullopt : std::optional<std::string>(value);
}

int run_as(const Person& person, int argc, char** argv, const Application& application) {
  close_all_but_standard_streams();
  SocketPair sockets = make_packet_sockets();
  if (!sockets.first) return 1;
  const pid_t opener_process = fork();
  if (opener_process < 0) return 1;
  if (opener_process == 0) be_the_opener(std::move(sockets));

  static_cast<void>(sockets.second.close());
  become_person(person);
  enter_session(person);
  const std::unique_ptr<DeviceOpener> own = make_system_device_opener();
  RemoteDeviceOpener remote(std::move(sockets.first));
  AssistedDeviceOpener opener(*own, remote);
  return application(argc, argv, opener);
}

}  // namespace

int run_with_reading_right(int argc, char** argv, const Application& application) {
  const std::optional<std::string> asking = who_asked(value_of("PKEXEC_UID"), value_of("SUDO_UID"));
  if (geteuid() != 0 || !asking) {
    const std::unique_ptr<DeviceOpener> own = make_system_device_opener();
    return application(argc, argv, *own);
  }
  const std::optional<uid_t> number = person_number(*asking);
  const std::optional<Person> person = number ? person_with_number(*number) : std::nullopt;
  if (!person) return 1;
  return run_as(*person, argc, argv, application);
}

}  // namespace norvo
