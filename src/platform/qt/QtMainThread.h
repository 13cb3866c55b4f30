// The main thread by way of the toolkit's event loop; work also runs while a dialog is modal.
#pragma once

#include <QObject>
#include <deque>
#include <functional>
#include <memory>
#include <mutex>
#include <vector>

#include "wizard/MainThread.h"

namespace norvo {

class QtMainThread : public QObject, public MainThread {
  Q_OBJECT

 public:
  // On the main thread, with an application object. Shuts down when that application's event loop
  // has ended, at the latest when destroyed.
  QtMainThread();
  ~QtMainThread() override;

  void post(std::function<void()> work) override;
  void post_after(std::chrono::milliseconds delay, std::function<void()> work) override;

  // What `work` throws comes back to the caller.
  void call_and_wait(const std::function<void()>& work) override;

  // From now on nothing is run: posted work is dropped, and who waits for work that has not begun
  // gets the exception. Main thread; may be called again.
  void shutdown();

 Q_SIGNALS:
  // One for each piece of work, emitted by the thread that brings it.
  void work_came(QPrivateSignal);

 private:
  struct Call;

  void put_in_queue(std::function<void()> work);  // with mutex_ held
  void run_first();

  std::mutex mutex_;
  bool open_ = true;                          // guarded by mutex_
  std::deque<std::function<void()>> queue_;   // guarded by mutex_
  std::vector<std::weak_ptr<Call>> waiting_;  // guarded by mutex_
};

}  // namespace norvo
