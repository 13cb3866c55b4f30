#include "platform/terminal/StopSignals.h"

#include <csignal>

namespace norvo {
namespace {

std::atomic<std::atomic<std::int32_t>*> published_flag{nullptr};
std::atomic<bool> stop_wanted{false};
static_assert(std::atomic<std::atomic<std::int32_t>*>::is_always_lock_free);

extern "C" void request_stop(int /*signal*/) {
  stop_wanted = true;
  if (std::atomic<std::int32_t>* flag = published_flag) *flag = 1;
}

}  // namespace

void install_stop_signals() {
  struct sigaction action {};
  action.sa_handler = request_stop;
  action.sa_flags = SA_RESTART;
  sigemptyset(&action.sa_mask);
  sigaction(SIGINT, &action, nullptr);
  sigaction(SIGTERM, &action, nullptr);
  action.sa_handler = SIG_IGN;
  sigaction(SIGPIPE, &action, nullptr);
}

void publish_stop_flag(std::atomic<std::int32_t>* stop_now) {
  published_flag = stop_now;
  if (stop_now != nullptr && stop_wanted) *stop_now = 1;
}

}  // namespace norvo
