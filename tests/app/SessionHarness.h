// The whole program behind its window: controller, engine, wizard and session are the real ones,
// the window, the drive and the desktop are stand-ins. The test's thread is the main thread.
#pragma once

#include <atomic>
#include <chrono>
#include <cstdint>
#include <filesystem>
#include <memory>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

#include "app/WindowSession.h"
#include "support/EventLog.h"
#include "support/FakeDevice.h"
#include "support/FakeMainThread.h"
#include "support/FakeProbe.h"
#include "support/RecordingView.h"
#include "support/TemporaryFolder.h"
#include "support/WindowFakes.h"

namespace norvo::test {

// Opens the medium and keeps the paths.
class PathKeepingOpener final : public DeviceOpener {
 public:
  explicit PathKeepingOpener(FakeMedium& medium) : opener_(medium) {}
  OpenedDevice open(const std::filesystem::path& path) override {
    asked = true;
    held_.wait(true);
    paths.push_back(path);
    return opener_.open(path);
  }

  // A search waits for its drive until it is let go: for tests of what holds before the first
  // sector is read.
  void hold() { held_ = true; }
  void let_go() {
    held_ = false;
    held_.notify_all();
  }

  std::vector<std::filesystem::path> paths;  // of one worker at a time
  std::atomic<bool> asked = false;           // to open, held or not

 private:
  std::atomic<bool> held_ = false;
  FakeOpener opener_;
};

// More sectors than any test waits for.
inline constexpr std::uint64_t endless = std::uint64_t{1} << 40U;

class SessionHarness {
 public:
  // A drive "sdb1" of `sectors` sectors. Photos: "JPG" in the General pass and "PNG" in the
  // Thorough pass; videos: "MOV" and "AVI" in the General pass and "MKV" in the Thorough pass.
  explicit SessionHarness(std::uint64_t sectors = 8);

  // A medium of one letter for each sector: J, P a photo's first sector, M, A, K a video's, and any
  // other letter a sector of data filled with it.
  void draw(const std::string& sectors);

  // A medium of `sectors` sectors that all begin with `header`; of zeros without one.
  void make_headers(std::uint64_t sectors, const std::string& header);

  // From the first screen to the last Next, which starts the search. Search type as Recovery_MODE.
  void start_search(std::int32_t mode);
  void go_to_settings(std::int32_t mode);

  // Works as the main thread does until no search runs any more. False after a minute.
  bool finish_search();

  // The log since the last call, shortened, without what the timer repeats.
  std::vector<std::string> happened();

  std::filesystem::path results(const std::string& search) const {
    return destination / "Norvo Birch Results" / search;
  }

  TemporaryFolder folder;
  std::filesystem::path destination = folder.path() / "destination";
  EventLog log;
  std::ostringstream out;
  std::ostringstream system_log;
  FakeMedium medium;
  PathKeepingOpener opener{medium};
  FakeProbe probe;
  FakeNotices notices{log};
  FakeDesktop desktop{log};
  FakePanel panel{log};
  FakePreview preview{log};
  FakeDiskUtility disks{log};
  RecordingView view{log};
  QueuedMainThread main_thread;
  bool modal_session = false;   // a dialog is open
  bool lies_on_device = false;  // every folder on every device
  std::vector<std::pair<std::filesystem::path, std::filesystem::path>> asked_on_device;
  std::chrono::seconds ahead{0};  // of the time that it is
  WindowOperations operations{main_thread, [this] { return TimeLeft::Clock::now() + ahead; }};
  MyTableController controller{u"Norvo Birch", opener, operations, operations};
  DriveList drives{disks, false};
  DevicePermissions permissions;
  std::unique_ptr<WindowSession> session;

 private:
  void write_signatures() const;
};

}  // namespace norvo::test
