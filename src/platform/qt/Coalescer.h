// Turns a burst of wishes for the same work into few runs of it. Main thread.
#pragma once

#include <QElapsedTimer>
#include <QTimer>
#include <functional>

namespace norvo {

class Coalescer {
 public:
  // `work` runs at most every `milliseconds`, later than the wish, on the event loop.
  Coalescer(std::function<void()> work, int milliseconds);

  void wish();

  // Does now what was wished for; nothing without a wish.
  void flush();

 private:
  std::function<void()> work_;
  int milliseconds_;
  QTimer timer_;
  QElapsedTimer since_last_;
};

}  // namespace norvo
