#include <unistd.h>

#include "platform/decoder/Background.h"

namespace norvo {

void take_rank(DecoderRank rank) {
  static_cast<void>(nice(rank == DecoderRank::background ? 20 : 10));
}

std::optional<std::chrono::nanoseconds> processor_time(pid_t /*pid*/) {
  return std::nullopt;
}

}  // namespace norvo
