// Which job a decoder takes next. Not for several threads at once.
#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <tuple>
#include <unordered_map>

#include "platform/decoder/DecoderProtocol.h"

namespace norvo {

// Pictures before verdicts; then the higher priority; then what was asked for last, which is what
// the person is looking at.
class JobQueue {
 public:
  struct Entry {
    std::uint64_t id = 0;
    DecoderPurpose purpose = DecoderPurpose::picture;
    std::int32_t priority = 0;
  };

  // An identifier that waits already is moved to its new place.
  void push(const Entry& entry);
  std::optional<Entry> pop();

  // Both do nothing when `id` does not wait.
  void set_priority(std::uint64_t id, std::int32_t priority);
  void remove(std::uint64_t id);

  void clear();
  std::size_t size() const { return entries_.size(); }
  std::size_t pictures() const { return pictures_; }

 private:
  // Smallest first.
  struct Place {
    bool is_verdict = false;
    std::int64_t negative_priority = 0;
    std::int64_t negative_age = 0;

    bool operator<(const Place& other) const {
      return std::tie(is_verdict, negative_priority, negative_age) <
             std::tie(other.is_verdict, other.negative_priority, other.negative_age);
    }
  };

  std::map<Place, Entry> entries_;
  std::unordered_map<std::uint64_t, Place> places_;
  std::int64_t pushed_ = 0;
  std::size_t pictures_ = 0;  // among the entries
};

}  // namespace norvo
