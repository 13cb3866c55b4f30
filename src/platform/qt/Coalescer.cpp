#include "platform/qt/Coalescer.h"

#include <algorithm>
#include <utility>

namespace norvo {

Coalescer::Coalescer(std::function<void()> work, int milliseconds)
    : work_(std::move(work)), milliseconds_(milliseconds) {
  timer_.setSingleShot(true);
  timer_.setTimerType(Qt::PreciseTimer);
  QObject::connect(&timer_, &QTimer::timeout, &timer_, [this] {
    since_last_.start();
    work_();
  });
}

void Coalescer::wish() {
  if (timer_.isActive()) return;
  const qint64 passed = since_last_.isValid() ? since_last_.elapsed() : milliseconds_;
  timer_.start(static_cast<int>(std::max<qint64>(0, milliseconds_ - passed)));
}

void Coalescer::flush() {
  if (!timer_.isActive()) return;
  timer_.stop();
  since_last_.start();
  work_();
}

}  // namespace norvo
