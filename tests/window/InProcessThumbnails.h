// Thumbnails by the toolkit's own image readers in a few threads of this process: for pictures of
// the window, and for tests. The program itself decodes in processes without rights. Main thread.
#pragma once

#include <QThreadPool>
#include <cstdint>
#include <mutex>
#include <vector>

#include "platform/qt/ThumbnailSource.h"
#include "wizard/ScopedPosts.h"

namespace norvo {

class InProcessThumbnails : public ThumbnailSource {
 public:
  // Pictures come through `main_thread`, which outlives this.
  explicit InProcessThumbnails(MainThread& main_thread);

  // Waits for the pictures that are being made.
  ~InProcessThumbnails() override;

  void request(const std::filesystem::path& path, const QString& image_UID, int pixels) override;
  void put_first(const QString& image_UID) override;
  void cancel_all() override;

 private:
  struct Job {
    std::filesystem::path path;
    QString image_UID;
    int pixels;
    std::uint64_t round;
  };

  void work_on_newest();
  void report(const Job& job, const QImage& picture);

  ScopedPosts posts_;
  QThreadPool pool_;
  std::mutex mutex_;
  std::vector<Job> waiting_;  // guarded by mutex_
  std::uint64_t round_ = 0;   // main thread only: requests of earlier rounds were cancelled
};

}  // namespace norvo
