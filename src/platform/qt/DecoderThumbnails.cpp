#include "platform/qt/DecoderThumbnails.h"

#include <algorithm>

#include "platform/qt/PictureImage.h"

namespace norvo {
namespace {

PictureJudgement judgement_of(const Verdict& verdict) {
  using enum PictureJudgement::Kind;
  switch (verdict.completeness) {
    case Completeness::whole:
      return {.kind = whole, .percent = {}};
    case Completeness::partly:
      return {.kind = partly, .percent = verdict.percent};
    case Completeness::embedded_only:
      return {.kind = embedded_only, .percent = {}};
    case Completeness::not_known:
    case Completeness::nothing:
      break;
  }
  return {};
}

}  // namespace

DecoderThumbnails::DecoderThumbnails(MainThread& main_thread, const std::filesystem::path& decoder,
                                     unsigned processes)
    : posts_(main_thread),
      pool_({.decoder = decoder, .processes = processes}, [this](const DecoderResult& result) {
        posts_.post([this, result] { take(result); });
      }) {
}

void DecoderThumbnails::request(const std::filesystem::path& path, const QString& image_UID,
                                int pixels) {
  const std::uint64_t id = ++last_id_;
  const auto side = static_cast<std::uint32_t>(std::max(1, pixels));
  waiting_.insert(id, {.image_UID = image_UID, .pixels = pixels});
  // Items are asked for when they come into view, so the latest are those that are looked at.
  pool_.request({.id = id, .path = path, .box = {side, side}});
}

void DecoderThumbnails::cancel_all() {
  pool_.cancel_all();
  waiting_.clear();
}

void DecoderThumbnails::take(const DecoderResult& result) {
  const auto request = waiting_.find(result.id);
  if (request == waiting_.end()) return;
  const QString image_UID = request->image_UID;
  const int pixels = request->pixels;
  const bool first = !request->answered;
  request->answered = true;
  if (result.is_last) waiting_.erase(request);
  // The first result has the picture, or none; a second one has only the verdict.
  if (first) Q_EMIT done(image_UID, result.picture ? image_of(*result.picture) : QImage(), pixels);
  const PictureJudgement judgement = judgement_of(result.verdict);
  if (judgement.kind != PictureJudgement::Kind::unknown) Q_EMIT judged(image_UID, judgement);
}

}  // namespace norvo
