// Pictures of untrusted files, made in processes without rights; the caller never waits.
//
// A window connects it like this:
//
//   DecoderPool pool({.decoder = executable_folder() / "norvo-decoder"},
//                    [this](const DecoderResult& result) { post_to_main_thread(result); });
//   pool.request({.id = 7, .path = file, .box = {100, 100}, .priority = 1});
//   pool.set_priority(7, 2);  // it came into view
//   pool.cancel_all();        // the gallery was cleared
//
// A file whose decoder dies, hangs, eats memory or answers nonsense loses its own result and
// nothing else: that process is ended and the next file gets a fresh one. As the damage may be
// that of an earlier file, one that was not the first of its process has a second try in a fresh
// one.
#pragma once

#include <chrono>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <memory>
#include <optional>

#include "platform/decoder/Picture.h"
#include "util/UniqueFd.h"

namespace norvo {

// The processes of a pool that is not told how many: as many as cores less one, at least one. With
// `cores` 0 the system does not tell how many there are.
constexpr unsigned usual_processes(unsigned cores) {
  return cores > 1 ? cores - 1 : 1;
}

struct DecoderPoolSettings {
  std::filesystem::path decoder;     // absolute path of norvo-decoder
  unsigned processes = 0;            // 0: usual_processes() of this machine's cores
  unsigned files_per_process = 200;  // then a fresh one
  // For each job; then its process is killed. The limit is on the time for which the process
  // computes (where the system tells it), as others may keep it from the processors; the patience
  // is for one that does nothing at all. In the background it may be kept from them for long.
  std::chrono::milliseconds time_limit{10'000};
  std::chrono::milliseconds patience{30'000};
  std::chrono::milliseconds background_patience{300'000};
  std::uint64_t memory_limit = std::uint64_t{1536} << 20U;  // bytes of address space per process
};

struct DecoderJob {
  std::uint64_t id = 0;        // the caller's; unique among the jobs that are not ended
  std::filesystem::path path;  // must be a regular file; a link as its last part is not followed
  std::shared_ptr<const UniqueFd> file = {};  // open already, in place of `path`; or null
  PictureSize box;            // pixels that the picture must fit in; sides go to 1 to 1024
  std::int32_t priority = 0;  // the higher one first; among equals what was asked for last
  bool wants_verdict = true;
};

enum class DecoderFailure : std::uint8_t {
  none,        // the decoder answered
  file,        // not a regular file, or it cannot be opened
  no_decoder,  // the decoder cannot be started; says nothing of the file
  starved,     // in the background, no processor was to be had; says nothing of the file
  died,        // the decoder ended over it
  time_limit,  // or the patience
  bad_answer,  // the decoder broke the protocol
};

// A job has one result with its picture, and a second one, without, when the verdict takes longer
// than the picture. Verdicts come after all pictures that wait: one that is being worked on is put
// back when a picture would have to wait for it.
struct DecoderResult {
  std::uint64_t id = 0;
  std::optional<Picture> picture;  // fits the box, upright, never enlarged; none: the placeholder
  Verdict verdict;
  DecoderFailure failure = DecoderFailure::none;
  bool is_last = false;  // nothing more comes for this job
};

class DecoderPool {
 public:
  // Called on the pool's own thread, one call at a time. It may call the pool, but not destroy it,
  // and must not throw.
  using Callback = std::function<void(const DecoderResult&)>;

  // Starts the pool's thread; processes start when there is work.
  DecoderPool(DecoderPoolSettings settings, Callback callback);

  // Ends the processes. Waits for a running callback and not for any file; no call comes after it.
  ~DecoderPool();
  DecoderPool(const DecoderPool&) = delete;
  DecoderPool& operator=(const DecoderPool&) = delete;

  // All from any thread, at once. An identifier that is not (or no longer) known is ignored.

  // Asking again for an `id` that is not ended replaces it and puts it before its equals.
  void request(DecoderJob job);
  // Puts it also before its equals.
  void set_priority(std::uint64_t id, std::int32_t priority);

  // No result comes after this, except for one that is being handed over at this moment.
  void cancel(std::uint64_t id);
  void cancel_all();

  // Whether the decoders compute only while nobody else wants the processors; not so at first.
  // Files that are begun when it comes on stay as they are; those that are begun in the background
  // are begun anew when it goes off. Costs each decoder a fresh process.
  void set_background(bool on);

  // Processes started so far, for measurements and tests.
  std::uint64_t started_processes() const;

 private:
  class Core;
  std::unique_ptr<Core> core_;
};

}  // namespace norvo
