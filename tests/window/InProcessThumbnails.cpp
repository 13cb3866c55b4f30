#include "window/InProcessThumbnails.h"

#include <QImageReader>
#include <QThread>
#include <algorithm>
#include <optional>
#include <utility>

#include "platform/qt/QtText.h"

namespace norvo {
namespace {

// A picture beyond this is no photo, and decoding it would take too long.
constexpr qint64 most_pixels = 400'000'000;

QImage small_picture(const std::filesystem::path& path, int pixels) {
  QImageReader reader(path_to_qt(path));
  reader.setAutoTransform(true);
  const QSize size = reader.size();
  if (size.isValid()) {
    if (static_cast<qint64>(size.width()) * size.height() > most_pixels) return {};
    // Readers that can, decode at this size from the start.
    if (std::max(size.width(), size.height()) > pixels) {
      reader.setScaledSize(
          size.scaled(pixels, pixels, Qt::KeepAspectRatio).expandedTo(QSize(1, 1)));
    }
  }
  QImage picture = reader.read();
  if (picture.isNull() || std::max(picture.width(), picture.height()) <= pixels) return picture;
  return picture.scaled(pixels, pixels, Qt::KeepAspectRatio, Qt::SmoothTransformation);
}

}  // namespace

InProcessThumbnails::InProcessThumbnails(MainThread& main_thread) : posts_(main_thread) {
  // One core stays free for the search.
  pool_.setMaxThreadCount(std::max(1, QThread::idealThreadCount() - 1));
  pool_.setThreadPriority(QThread::LowPriority);
}

InProcessThumbnails::~InProcessThumbnails() {
  InProcessThumbnails::cancel_all();
  pool_.waitForDone();
}

void InProcessThumbnails::request(const std::filesystem::path& path, const QString& image_UID,
                                  int pixels) {
  {
    const std::lock_guard lock(mutex_);
    waiting_.push_back({path, image_UID, pixels, round_});
  }
  pool_.start([this] { work_on_newest(); });
}

void InProcessThumbnails::put_first(const QString& image_UID) {
  const std::lock_guard lock(mutex_);
  std::ranges::stable_partition(waiting_,
                                [&](const Job& job) { return job.image_UID != image_UID; });
}

void InProcessThumbnails::cancel_all() {
  const std::lock_guard lock(mutex_);
  waiting_.clear();
  ++round_;
}

void InProcessThumbnails::work_on_newest() {
  std::optional<Job> job;
  {
    const std::lock_guard lock(mutex_);
    if (waiting_.empty()) return;
    job = std::move(waiting_.back());
    waiting_.pop_back();
  }
  posts_.post([this, job = *job, picture = small_picture(job->path, job->pixels)] {
    report(job, picture);
  });
}

void InProcessThumbnails::report(const Job& job, const QImage& picture) {
  if (job.round == round_) Q_EMIT done(job.image_UID, picture, job.pixels);
}

}  // namespace norvo
