// Stand-ins for what surrounds the wizard's window. All write into one log.
#pragma once

#include <deque>
#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "results/PreviewPane.h"
#include "storage/DiskUtility.h"
#include "support/EventLog.h"
#include "util/Alert.h"
#include "wizard/Desktop.h"
#include "wizard/Notices.h"

namespace norvo::test {

class FakeNotices final : public Notices {
 public:
  explicit FakeNotices(EventLog& log) : log_(log) {}

  int code = closed_by_button;  // of the modal runs
  std::optional<std::filesystem::path> chosen_folder;
  std::function<void()> during_SaveFile_Info;

  int run_Browse_Info() override { return run("run Browse_Info"); }
  void hide_Browse_Info() override { log_.add("hide_Browse_Info"); }
  std::optional<std::filesystem::path> choose_folder() override {
    log_.add("choose folder");
    return chosen_folder;
  }
  int run_SaveFile_Info() override {
    log_.add("run SaveFile_Info");
    if (during_SaveFile_Info) during_SaveFile_Info();
    return code;
  }
  void close_SaveFile_Info() override { log_.add("close SaveFile_Info"); }
  void show_LoadDrive() override { log_.add("show_LoadDrive"); }
  void hide_LoadDrive() override { log_.add("hide_LoadDrive"); }
  void show_ClearPreview() override { log_.add("show_ClearPreview"); }
  void hide_ClearPreview() override { log_.add("hide_ClearPreview"); }
  void run_Help_Support() override { log_.add("run Help_Support"); }

 private:
  int run(const char* entry) {
    log_.add(entry);
    return code;
  }

  EventLog& log_;
};

class FakeDesktop final : public Desktop {
 public:
  explicit FakeDesktop(EventLog& log) : log_(log) {}

  bool has_programs = true;  // something can be started for what is opened

  bool open_path(const std::filesystem::path& path) override {
    log_.add("open " + path.string());
    return has_programs;
  }
  bool open_address(TextView address) override {
    log_.add("open " + utf8_from_text(address));
    return has_programs;
  }
  void copy_text(TextView text) override { log_.add("copy " + utf8_from_text(text)); }
  void terminate() override { log_.add("terminate"); }

 private:
  EventLog& log_;
};

// 'alert "<message>" [Yes|No]', with the informative text behind it where there is one. An
// alternate button is told from the other one: [Yes|alternate Later|No].
class FakePanel final : public AlertPanel {
 public:
  explicit FakePanel(EventLog& log) : log_(log) {}

  std::deque<AlertAnswer> answers;  // one for each alert; then the default button
  std::function<void(const Alert&)> during_alert;

  AlertAnswer run(const Alert& alert) override {
    std::string entry =
        "alert \"" + utf8_from_text(alert.message) + "\" [" + utf8_from_text(alert.default_button);
    if (!alert.alternate_button.empty()) {
      entry += "|alternate " + utf8_from_text(alert.alternate_button);
    }
    if (!alert.other_button.empty()) entry += "|" + utf8_from_text(alert.other_button);
    entry += "]";
    if (!alert.informative_text.empty()) entry += " " + utf8_from_text(alert.informative_text);
    log_.add(std::move(entry));
    if (during_alert) during_alert(alert);
    if (answers.empty()) return AlertAnswer::default_button;
    const AlertAnswer answer = answers.front();
    answers.pop_front();
    return answer;
  }

 private:
  EventLog& log_;
};

class FakePreview final : public PreviewPane {
 public:
  explicit FakePreview(EventLog& log) : log_(log) {}

  void clear() override { log_.add("clear preview"); }
  void CreateFile_QuickLook_Preview(const std::filesystem::path& path) override {
    log_.add("preview " + path.string());
  }

 private:
  EventLog& log_;
};

// Mounted volumes as a test lists them, the same for both enumerations.
class FakeDiskUtility final : public DiskUtility {
 public:
  explicit FakeDiskUtility(EventLog& log) : log_(log) {}

  void add_volume(TextView identifier, TextView name, TextView file_system, std::uint64_t bytes) {
    DiskReport report;
    report.set("DeviceIdentifier", identifier);
    report.set("VolumeName", name);
    report.set("FilesystemUserVisibleName", file_system);
    report.set("IOKitSize", bytes);
    volumes_.emplace_back("/media/" + std::to_string(volumes_.size()), std::move(report));
  }
  void unplug_all() { volumes_.clear(); }

  std::vector<std::filesystem::path> mountedRemovableMedia() override { return enumerate(); }
  std::vector<std::filesystem::path> mountedLocalVolumePaths() override { return enumerate(); }
  std::optional<DiskReport> info(const std::filesystem::path& path) override {
    for (const auto& [place, report] : volumes_) {
      if (place == path) return report;
    }
    return std::nullopt;
  }

 private:
  std::vector<std::filesystem::path> enumerate() {
    log_.add("enumerate drives");
    std::vector<std::filesystem::path> paths;
    for (const auto& volume : volumes_) paths.push_back(volume.first);
    return paths;
  }

  EventLog& log_;
  std::vector<std::pair<std::filesystem::path, DiskReport>> volumes_;
};

}  // namespace norvo::test
