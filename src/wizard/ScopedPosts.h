// The main thread, as one object there has work brought to it by other threads: work that has not
// begun when the object goes is dropped.
//
// A member of that object, before the members whose threads post: those have ended when it goes.
#pragma once

#include <functional>
#include <memory>
#include <utility>

#include "wizard/MainThread.h"

namespace norvo {

class ScopedPosts {
 public:
  // Made and destroyed on the main thread. `main_thread` outlives this.
  explicit ScopedPosts(MainThread& main_thread) : main_thread_(main_thread) {}
  ScopedPosts(const ScopedPosts&) = delete;
  ScopedPosts& operator=(const ScopedPosts&) = delete;
  ~ScopedPosts() = default;

  // As MainThread::post. Any thread.
  void post(std::function<void()> work) const {
    main_thread_.post([owner = std::weak_ptr<const Life>(life_), work = std::move(work)] {
      // Nothing else than the main thread ends that life.
      if (!owner.expired()) work();
    });
  }

 private:
  struct Life {};

  MainThread& main_thread_;
  std::shared_ptr<const Life> life_ = std::make_shared<const Life>();
};

}  // namespace norvo
