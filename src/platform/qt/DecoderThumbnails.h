// Thumbnails from the decoder's processes, and what they tell of each file. Main thread.
#pragma once

#include <QHash>
#include <cstdint>
#include <filesystem>

#include "platform/decoder/DecoderPool.h"
#include "platform/qt/ThumbnailSource.h"
#include "wizard/ScopedPosts.h"

namespace norvo {

// Results come through `main_thread`, which outlives this. `decoder` is the program norvo-decoder.
class DecoderThumbnails : public ThumbnailSource {
 public:
  struct Settings {
    std::filesystem::path decoder;
    unsigned processes = 0;      // 0: as many as cores less one
    bool wants_verdicts = true;  // else judged() comes only of what decoding tells by itself
  };
  DecoderThumbnails(MainThread& main_thread, const Settings& settings);

  void request(const std::filesystem::path& path, const QString& image_UID, int pixels) override;
  void put_first(const QString& image_UID) override;
  void cancel_all() override;

  // While a search runs: it goes before its pictures.
  void set_background(bool on) { pool_.set_background(on); }

 private:
  void take(const DecoderResult& result);

  struct Request {
    QString image_UID;
    int pixels = 0;
    bool answered = false;  // the picture has come, the verdict has not
  };

  const bool wants_verdicts_;
  std::uint64_t last_id_ = 0;
  QHash<std::uint64_t, Request> waiting_;
  QHash<QString, std::uint64_t> newest_;  // of the requests of an item, while it has no answer
  ScopedPosts posts_;
  DecoderPool pool_;  // ends first: it calls back
};

}  // namespace norvo
