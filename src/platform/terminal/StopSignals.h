// SIGINT and SIGTERM as a stop request, and broken pipes as nothing to die of.
#pragma once

#include <atomic>
#include <cstdint>

namespace norvo {

// From now on SIGINT and SIGTERM set the published flag to 1. A signal that arrives while no flag
// is published sets the next one at once. SIGPIPE is ignored: a reader that went away must not end
// a search. Main thread, before any other thread.
void install_stop_signals();

// The flag that a stop request sets, or null for none. Lock-free atomics only.
void publish_stop_flag(std::atomic<std::int32_t>* stop_now);

}  // namespace norvo
