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

bool says_nothing_of_the_file(DecoderFailure failure) {
  return failure == DecoderFailure::no_decoder || failure == DecoderFailure::starved;
}

}  // namespace

DecoderThumbnails::DecoderThumbnails(MainThread& main_thread, const Settings& settings)
    : wants_verdicts_(settings.wants_verdicts),
      posts_(main_thread),
      pool_(
          {.decoder = settings.decoder, .processes = settings.processes},
          [this](const DecoderResult& result) { posts_.post([this, result] { take(result); }); }) {
}

void DecoderThumbnails::request(const std::filesystem::path& path, const QString& image_UID,
                                int pixels) {
  const std::uint64_t id = ++last_id_;
  const auto side = static_cast<std::uint32_t>(std::max(1, pixels));
  waiting_.insert(id, {.image_UID = image_UID, .pixels = pixels});
  newest_.insert(image_UID, id);
  // Items are asked for when they come into view, so the latest are those that are looked at.
  pool_.request({.id = id, .path = path, .box = {side, side}, .wants_verdict = wants_verdicts_});
}

void DecoderThumbnails::put_first(const QString& image_UID) {
  const auto newest = newest_.constFind(image_UID);
  if (newest != newest_.constEnd()) pool_.set_priority(*newest, 0);
}

void DecoderThumbnails::cancel_all() {
  pool_.cancel_all();
  waiting_.clear();
  newest_.clear();
}

void DecoderThumbnails::take(const DecoderResult& result) {
  const auto request = waiting_.find(result.id);
  if (request == waiting_.end()) return;
  const QString image_UID = request->image_UID;
  const int pixels = request->pixels;
  const bool first = !request->answered;
  request->answered = true;
  if (result.is_last) waiting_.erase(request);
  if (first && newest_.value(image_UID) == result.id) newest_.remove(image_UID);
  if (says_nothing_of_the_file(result.failure)) {
    if (first) Q_EMIT postponed(image_UID, pixels);
    return;
  }
  // The first result has the picture, or none; a second one has only the verdict.
  if (first) Q_EMIT done(image_UID, result.picture ? image_of(*result.picture) : QImage(), pixels);
  const PictureJudgement judgement = judgement_of(result.verdict);
  if (judgement.kind != PictureJudgement::Kind::unknown) Q_EMIT judged(image_UID, judgement);
}

}  // namespace norvo
