#include "platform/decoder/PoolCore.h"

#include <poll.h>

#include <algorithm>
#include <utility>

#include "platform/decoder/HelperInput.h"

namespace norvo {
namespace {

// What a cancelled file may still take of its decoder, which a new process would cost as well.
constexpr std::chrono::milliseconds grace_of_cancelled{100};
// As long a verdict may stay in the way of a picture; it has to be begun anew then.
constexpr std::chrono::milliseconds grace_of_verdict{100};
// Between two looks at a file that is near the end of its time.
constexpr std::chrono::milliseconds shortest_look{20};
// How long the destructor looks after killed processes.
constexpr std::chrono::milliseconds patience_with_dying{1000};

unsigned number_of_processes(unsigned wanted) {
  return wanted != 0 ? wanted : usual_processes(std::thread::hardware_concurrency());
}

std::string extension_for_request(const std::filesystem::path& path) {
  const std::string extension = path.extension().native();
  return portable_extension(extension.empty() ? extension : extension.substr(1));
}

PictureSize allowed_box(PictureSize box) {
  return {.width = std::clamp<std::uint32_t>(box.width, 1, longest_picture_side),
          .height = std::clamp<std::uint32_t>(box.height, 1, longest_picture_side)};
}

DecoderResult without_picture(DecoderFailure failure) {
  DecoderResult result;
  result.failure = failure;
  return result;
}

}  // namespace

PoolCore::PoolCore(DecoderPoolSettings settings, DecoderPool::Callback callback)
    : settings_(std::move(settings)),
      callback_(std::move(callback)),
      seats_(number_of_processes(settings_.processes)),
      thread_([this] { run(); }) {
}

PoolCore::~PoolCore() {
  {
    const std::lock_guard lock(mutex_);
    ending_ = true;
  }
  wake_.wake();
  thread_.join();
}

void PoolCore::request(DecoderJob job) {
  {
    const std::lock_guard lock(mutex_);
    queue_.push({.id = job.id, .purpose = DecoderPurpose::picture, .priority = job.priority});
    job.box = allowed_box(job.box);
    const std::uint64_t id = job.id;
    jobs_.insert_or_assign(id, Pending{.job = std::move(job)});
  }
  wake_.wake();
}

void PoolCore::set_priority(std::uint64_t id, std::int32_t priority) {
  const std::lock_guard lock(mutex_);
  const auto pending = jobs_.find(id);
  if (pending == jobs_.end()) return;
  pending->second.job.priority = priority;
  queue_.set_priority(id, priority);
}

void PoolCore::cancel(std::uint64_t id) {
  {
    const std::lock_guard lock(mutex_);
    queue_.remove(id);
    jobs_.erase(id);
  }
  wake_.wake();
}

void PoolCore::cancel_all() {
  {
    const std::lock_guard lock(mutex_);
    queue_.clear();
    jobs_.clear();
  }
  wake_.wake();
}

void PoolCore::set_background(bool on) {
  background_ = on;
  wake_.wake();
}

void PoolCore::run() {
  block_broken_pipe_signal();
  while (true) {
    {
      const std::lock_guard lock(mutex_);
      if (ending_) break;
    }
    shorten_cancelled();
    hasten();
    make_room();
    give_work();
    wait();
    for (Seat& seat : seats_) {
      if (seat.work) look_at(seat);
    }
    bury();
  }
  for (Seat& seat : seats_) dismiss(seat);
  const auto end = Clock::now() + patience_with_dying;
  while (!dying_.empty() && Clock::now() < end) {
    bury();
    std::this_thread::sleep_for(std::chrono::milliseconds(1));
  }
}

// Sleeps until a decoder says something, a deadline passes or somebody calls.
void PoolCore::wait() {
  std::vector<pollfd> watched{{.fd = wake_.descriptor(), .events = POLLIN, .revents = 0}};
  auto until = Clock::time_point::max();
  if (!dying_.empty()) until = Clock::now() + std::chrono::milliseconds(20);
  for (const Seat& seat : seats_) {
    if (!seat.work) continue;
    watched.push_back({.fd = seat.process->descriptor(), .events = POLLIN, .revents = 0});
    until = std::min(until, seat.deadline);
  }
  int milliseconds = -1;
  if (until != Clock::time_point::max()) {
    const auto left = std::chrono::ceil<std::chrono::milliseconds>(until - Clock::now());
    milliseconds = static_cast<int>(std::clamp<std::int64_t>(left.count(), 0, 60'000));
  }
  poll(watched.data(), static_cast<nfds_t>(watched.size()), milliseconds);
  wake_.clear();
}

void PoolCore::look_at(Seat& seat) {
  switch (seat.process->receive()) {
    case DecoderProcess::Progress::answered:
      answered(seat);
      break;
    case DecoderProcess::Progress::bad_answer:
      failed(seat, DecoderFailure::bad_answer);
      break;
    case DecoderProcess::Progress::ended:
      failed(seat, DecoderFailure::died);
      break;
    case DecoderProcess::Progress::waiting:
      if (const auto failure = time_is_over(seat)) failed(seat, *failure);
      break;
  }
}

bool PoolCore::is_background(const Seat& seat) const {
  return seat.process && seat.process->rank() == DecoderRank::background;
}

// When the deadline of its file has passed, its process may have waited for a processor meanwhile,
// and gets a later one.
std::optional<DecoderFailure> PoolCore::time_is_over(Seat& seat) const {
  const auto now = Clock::now();
  if (now < seat.deadline) return std::nullopt;
  const auto computed = seat.process->processor_time();
  if (!computed || !seat.computed_before) return DecoderFailure::time_limit;
  const Clock::duration left = settings_.time_limit - (*computed - *seat.computed_before);
  if (left <= Clock::duration::zero()) return DecoderFailure::time_limit;
  if (now >= seat.end) {
    return is_background(seat) ? DecoderFailure::starved : DecoderFailure::time_limit;
  }
  const auto next = std::min(left, seat.end - now);
  seat.deadline = now + std::max<Clock::duration>(next, shortest_look);
  return std::nullopt;
}

// A file that nobody waits for any more does not hold up the next one.
void PoolCore::shorten_cancelled() {
  const auto soon = Clock::now() + grace_of_cancelled;
  const std::lock_guard lock(mutex_);
  for (Seat& seat : seats_) {
    if (!seat.work) continue;
    const auto pending = jobs_.find(seat.work->entry.id);
    const bool wanted = pending != jobs_.end() && pending->second.serial == seat.work->serial;
    if (wanted) continue;
    seat.end = std::min(seat.end, soon);
    seat.deadline = std::min(seat.deadline, soon);
  }
}

// A process in the background cannot be raised by an ordinary person's program, and other programs
// may keep it from the processors for minutes, with a picture that somebody waits for by now.
void PoolCore::hasten() {
  if (background_) return;
  for (Seat& seat : seats_) {
    if (!seat.work || !is_background(seat)) continue;
    put_back(seat);
  }
}

// Its file is begun anew, in another process, when its turn comes again.
void PoolCore::put_back(Seat& seat) {
  const Work work = std::move(*seat.work);
  seat.work.reset();
  dismiss(seat);
  give_back(work, false);
}

// A verdict that is being worked on does not keep a picture waiting.
void PoolCore::make_room() {
  std::size_t waiting = 0;
  {
    const std::lock_guard lock(mutex_);
    waiting = queue_.pictures();
  }
  for (const Seat& seat : seats_) {
    if (!seat.work && waiting > 0) --waiting;
  }
  const auto now = Clock::now();
  for (Seat& seat : seats_) {
    if (waiting == 0) return;
    if (!seat.work || seat.work->entry.purpose != DecoderPurpose::verdict) continue;
    const auto end_of_grace = seat.begin + grace_of_verdict;
    seat.deadline = std::min(seat.deadline, end_of_grace);
    if (now < end_of_grace) continue;
    put_back(seat);
    --waiting;
  }
}

void PoolCore::give_work() {
  for (Seat& seat : seats_) {
    while (!seat.work) {
      std::optional<Work> work = next_work();
      if (!work) return;
      begin(seat, std::move(*work));
    }
  }
}

std::optional<PoolCore::Work> PoolCore::next_work() {
  const std::lock_guard lock(mutex_);
  if (ending_) return std::nullopt;
  const std::optional<JobQueue::Entry> entry = queue_.pop();
  if (!entry) return std::nullopt;
  Pending& pending = jobs_.at(entry->id);
  pending.serial = ++serials_;
  return Work{.entry = *entry, .job = pending.job, .serial = pending.serial};
}

void PoolCore::begin(Seat& seat, Work work) {
  std::shared_ptr<const UniqueFd> file = work.job.file;
  if (!file) file = std::make_shared<const UniqueFd>(open_regular_file(work.job.path));
  if (!*file) return hand_over(work, without_picture(DecoderFailure::file));
  const DecoderRequest request{.serial = work.serial,
                               .purpose = work.entry.purpose,
                               .box = work.job.box,
                               .extension = extension_for_request(work.job.path)};
  if (!send(seat, request, file->get())) {
    return hand_over(work, without_picture(DecoderFailure::no_decoder));
  }
  ++seat.files;
  seat.computed_before = seat.process->processor_time();
  const auto patience = is_background(seat) ? settings_.background_patience : settings_.patience;
  seat.begin = Clock::now();
  seat.end = seat.begin + patience;
  seat.deadline = std::min(seat.begin + settings_.time_limit, seat.end);
  seat.work = std::move(work);
}

// To the process of the seat, or to a fresh one when it has ended meanwhile or has another rank.
bool PoolCore::send(Seat& seat, const DecoderRequest& request, int file) {
  const DecoderRank rank = background_ ? DecoderRank::background : DecoderRank::usual;
  const bool fits = seat.process && seat.process->rank() == rank;
  if (fits && seat.process->send(request, file)) return true;
  dismiss(seat);
  DecoderProcess fresh(settings_.decoder, settings_.memory_limit, rank);
  if (!fresh.is_running()) return false;
  ++started_;
  seat.process.emplace(std::move(fresh));
  return seat.process->send(request, file);
}

void PoolCore::answered(Seat& seat) {
  const Work work = std::move(*seat.work);
  seat.work.reset();
  DecoderResult result;
  result.picture = seat.process->take_picture();
  result.verdict = seat.process->answer().verdict;
  if (seat.files >= settings_.files_per_process) dismiss(seat);
  hand_over(work, std::move(result));
}

void PoolCore::failed(Seat& seat, DecoderFailure failure) {
  const Work work = std::move(*seat.work);
  seat.work.reset();
  // An earlier file may have left the damage that this one suffered from.
  const bool was_fresh = seat.files <= 1;
  dismiss(seat);
  if (!was_fresh && give_back(work, true)) return;
  hand_over(work, without_picture(failure));
}

// Back into the queue, before its equals. False when nobody waits for it any more, or when it had
// its second try.
bool PoolCore::give_back(const Work& work, bool counts_as_try) {
  const std::lock_guard lock(mutex_);
  const auto pending = jobs_.find(work.entry.id);
  if (pending == jobs_.end() || pending->second.serial != work.serial) return false;
  if (counts_as_try && std::exchange(pending->second.second_try, true)) return false;
  pending->second.serial = 0;
  queue_.push(work.entry);
  return true;
}

// Fills in what follows from the job, and calls back unless the job was cancelled.
void PoolCore::hand_over(const Work& work, DecoderResult result) {
  result.id = work.entry.id;
  {
    const std::lock_guard lock(mutex_);
    const auto pending = jobs_.find(work.entry.id);
    if (ending_ || pending == jobs_.end() || pending->second.serial != work.serial) return;
    const bool verdict_is_open = work.entry.purpose == DecoderPurpose::picture &&
                                 result.failure == DecoderFailure::none &&
                                 result.verdict.completeness == Completeness::not_known;
    result.is_last = !(verdict_is_open && pending->second.job.wants_verdict);
    if (result.is_last) {
      jobs_.erase(pending);
    } else {
      pending->second.serial = 0;
      pending->second.second_try = false;
      queue_.push({.id = work.entry.id,
                   .purpose = DecoderPurpose::verdict,
                   .priority = pending->second.job.priority});
    }
  }
  callback_(result);
}

void PoolCore::dismiss(Seat& seat) {
  if (!seat.process) return;
  seat.process->kill();
  dying_.push_back(std::move(*seat.process));
  seat.process.reset();
  seat.files = 0;
}

void PoolCore::bury() {
  // A process can be moved into being and not assigned to: nothing can be erased.
  std::vector<DecoderProcess> left;
  for (DecoderProcess& process : dying_) {
    if (!process.has_ended()) left.push_back(std::move(process));
  }
  dying_.swap(left);
}

}  // namespace norvo
