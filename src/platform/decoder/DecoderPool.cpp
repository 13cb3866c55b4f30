#include "platform/decoder/DecoderPool.h"

#include "platform/decoder/PoolCore.h"

namespace norvo {

class DecoderPool::Core : public PoolCore {
 public:
  using PoolCore::PoolCore;
};

DecoderPool::DecoderPool(DecoderPoolSettings settings, Callback callback)
    : core_(std::make_unique<Core>(std::move(settings), std::move(callback))) {
}

DecoderPool::~DecoderPool() = default;

void DecoderPool::request(DecoderJob job) {
  core_->request(std::move(job));
}

void DecoderPool::set_priority(std::uint64_t id, std::int32_t priority) {
  core_->set_priority(id, priority);
}

void DecoderPool::cancel(std::uint64_t id) {
  core_->cancel(id);
}

void DecoderPool::cancel_all() {
  core_->cancel_all();
}

void DecoderPool::set_background(bool on) {
  core_->set_background(on);
}

std::uint64_t DecoderPool::started_processes() const {
  return core_->started_processes();
}

}  // namespace norvo
