#include "platform/decoder/JobQueue.h"

namespace norvo {

void JobQueue::push(const Entry& entry) {
  remove(entry.id);
  ++pushed_;
  const Place place{.is_verdict = entry.purpose == DecoderPurpose::verdict,
                    .negative_priority = -std::int64_t{entry.priority},
                    .negative_age = -pushed_};
  entries_.emplace(place, entry);
  places_.emplace(entry.id, place);
  if (!place.is_verdict) ++pictures_;
}

std::optional<JobQueue::Entry> JobQueue::pop() {
  if (entries_.empty()) return std::nullopt;
  const Entry first = entries_.begin()->second;
  remove(first.id);
  return first;
}

void JobQueue::set_priority(std::uint64_t id, std::int32_t priority) {
  const auto place = places_.find(id);
  if (place == places_.end()) return;
  Entry entry = entries_.at(place->second);
  entry.priority = priority;
  push(entry);
}

void JobQueue::remove(std::uint64_t id) {
  const auto place = places_.find(id);
  if (place == places_.end()) return;
  if (!place->second.is_verdict) --pictures_;
  entries_.erase(place->second);
  places_.erase(place);
}

void JobQueue::clear() {
  entries_.clear();
  places_.clear();
  pictures_ = 0;
}

}  // namespace norvo
