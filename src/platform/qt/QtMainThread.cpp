#include "platform/qt/QtMainThread.h"

#include <QCoreApplication>
#include <QThread>
#include <QTimer>
#include <condition_variable>
#include <exception>
#include <stdexcept>
#include <utility>

namespace norvo {

// A call that somebody waits for. Until it has begun it can be given up; once begun it ends.
struct QtMainThread::Call {
  enum class State { waiting, running, done, given_up };

  std::mutex mutex;
  std::condition_variable changed;
  State state = State::waiting;
  std::exception_ptr failure;

  bool advance(State from, State to) {
    const std::lock_guard lock(mutex);
    if (state != from) return false;
    state = to;
    changed.notify_all();
    return true;
  }

  void run(const std::function<void()>& work) {
    if (!advance(State::waiting, State::running)) return;
    try {
      work();
    } catch (...) {
      failure = std::current_exception();
    }
    advance(State::running, State::done);
  }
};

QtMainThread::QtMainThread() {
  connect(this, &QtMainThread::work_came, this, &QtMainThread::run_first, Qt::QueuedConnection);
  connect(QCoreApplication::instance(), &QCoreApplication::aboutToQuit, this,
          &QtMainThread::shutdown);
}

QtMainThread::~QtMainThread() {
  shutdown();
}

void QtMainThread::post(std::function<void()> work) {
  const std::lock_guard lock(mutex_);
  if (open_) put_in_queue(std::move(work));
}

// What threads hand over lies in a queue of ours, under a lock that the thread sanitizer sees; the
// toolkit carries nothing but the news of it. As there is one piece of news for each piece of work,
// the work keeps its order and its place among the toolkit's events, in the loop of a dialog, too.
void QtMainThread::put_in_queue(std::function<void()> work) {
  queue_.push_back(std::move(work));
  Q_EMIT work_came({});
}

void QtMainThread::run_first() {
  std::function<void()> work;
  {
    const std::lock_guard lock(mutex_);
    if (queue_.empty()) return;  // dropped by shutdown()
    work = std::move(queue_.front());
    queue_.pop_front();
  }
  work();
}

void QtMainThread::post_after(std::chrono::milliseconds delay, std::function<void()> work) {
  QTimer::singleShot(delay, this, [this, work = std::move(work)] { post(work); });
}

void QtMainThread::call_and_wait(const std::function<void()>& work) {
  if (QThread::currentThread() == thread()) {
    work();
    return;
  }
  const auto call = std::make_shared<Call>();
  {
    const std::lock_guard lock(mutex_);
    if (!open_) throw std::runtime_error("the main thread takes no more work");
    std::erase_if(waiting_, [](const std::weak_ptr<Call>& one) { return one.expired(); });
    waiting_.push_back(call);
    // The caller's function lives until the call is done or given up.
    put_in_queue([call, &work] { call->run(work); });
  }
  std::unique_lock lock(call->mutex);
  call->changed.wait(lock, [&call] {
    return call->state == Call::State::done || call->state == Call::State::given_up;
  });
  if (call->state == Call::State::given_up) {
    throw std::runtime_error("the main thread ended before the work began");
  }
  if (call->failure) std::rethrow_exception(call->failure);
}

void QtMainThread::shutdown() {
  std::deque<std::function<void()>> dropped;
  std::vector<std::weak_ptr<Call>> waiting;
  {
    const std::lock_guard lock(mutex_);
    open_ = false;
    dropped.swap(queue_);
    waiting.swap(waiting_);
  }
  for (const auto& one : waiting) {
    if (const auto call = one.lock()) call->advance(Call::State::waiting, Call::State::given_up);
  }
}

}  // namespace norvo
