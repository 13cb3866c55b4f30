// The wizard with stand-ins for all that it works with.
#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "support/EventLog.h"
#include "support/FakeMainThread.h"
#include "support/RecordingView.h"
#include "support/WindowFakes.h"
#include "wizard/Wizard.h"

namespace norvo::test {

// Writes down what it is asked for; the settings of the last search are kept.
class FakeHost final : public SearchHost {
 public:
  explicit FakeHost(EventLog& log) : log_(log) {}

  std::optional<SearchSettings> started;

  void clear_stop_now() override { log_.add("stop_now = 0"); }
  void hand_over_selection() override { log_.add("hand over selection"); }
  void Check_Have_Permissions(TextView disk_identifier) override {
    log_.add("check permissions of " + utf8_from_text(disk_identifier));
  }
  void start_search(const SearchSettings& settings) override {
    started = settings;
    log_.add("start search");
  }

 private:
  EventLog& log_;
};

class FakeFacts final : public DestinationFacts {
 public:
  bool on_drive = false;
  std::optional<std::uint64_t> free;
  std::uint64_t found = 0;
  std::string found_on = "sdb1";
  std::vector<std::string> asked;  // "<folder> on <disk>"

  bool lies_on_drive(const std::filesystem::path& folder, TextView disk_identifier) override {
    asked.push_back(folder.string() + " on " + utf8_from_text(disk_identifier));
    return on_drive;
  }
  std::optional<std::uint64_t> free_space(const std::filesystem::path& /*folder*/) override {
    return free;
  }
  std::uint64_t found_so_far(TextView disk_identifier) override {
    return utf8_from_text(disk_identifier) == found_on ? found : 0;
  }
};

// An edition without audio searches, called "Norvo Long Name".
EditionPresentation usual_edition();

// Drives: "sdb1" of 1000 sectors and "sdc1" of 8589934592 sectors.
struct WizardHarness {
  explicit WizardHarness(EditionPresentation presentation = usual_edition());

  // The log, shortened, since the last call.
  std::vector<std::string> happened();

  // To a screen in the ways a person goes; what happens on the way is not logged. Search types as
  // Recovery_MODE; the destination is "/out".
  void open();
  void go_to_settings(std::int32_t mode);
  void go_to_screen_3(std::int32_t mode);
  void go_to_file_scan(std::int32_t mode);
  void choose_mode(std::int32_t mode);

  EventLog log;
  RecordingView view{log};
  EditionPresentation edition;
  WizardState state;
  FakeNotices notices{log};
  FakeDesktop desktop{log};
  FakePanel panel{log};
  FakePreview preview{log};
  FakeHost host{log};
  FakeFacts facts;
  ImmediateMainThread main_thread;
  MessageBoxes boxes{panel, main_thread};
  FakeDiskUtility disks{log};
  DriveList drives{disks, true};
  DriveScreen drive_screen{view, state, notices, drives};
  SectorRangeControls range{view};
  Destination destination;
  FileTypeCheckList check_list;
  SignatureTables tables;
  Gallery gallery;
  Wizard wizard;
};

}  // namespace norvo::test
