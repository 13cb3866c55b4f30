#include "EngineHarness.h"

#include <filesystem>
#include <fstream>
#include <iterator>

#include "engine/ProgressTimer.h"
#include "engine/ScanWorker.h"
#include "sigdb/SignatureTables.h"
#include "support/FakeDevice.h"
#include "support/Recorder.h"
#include "support/TemporaryFolder.h"

namespace {

namespace fs = std::filesystem;
using namespace norvo;
using namespace norvo::test;

// Paths as the search was told them, wherever the files really are.
class Place {
 public:
  explicit Place(const plain::Search& search) : told_(search.destination) {
    for (const std::string& folder : search.existing_folders) {
      fs::create_directories(real(folder));
    }
    for (const auto& [path, bytes] : search.existing_files) {
      fs::create_directories(real(path).parent_path());
      std::ofstream(real(path), std::ios::binary)
          .write(reinterpret_cast<const char*>(bytes.data()),
                 static_cast<std::streamsize>(bytes.size()));
    }
  }

  const fs::path& root() const { return folder_.path(); }
  fs::path real(const std::string& told) const {
    return folder_.path().native() + told.substr(told_.size());
  }
  std::string told(const fs::path& real) const {
    return real.empty() ? "" : told_ + real.native().substr(folder_.path().native().size());
  }

  void collect(plain::Outcome& outcome) const {
    for (const fs::directory_entry& entry : fs::recursive_directory_iterator(folder_.path())) {
      if (entry.is_directory()) {
        outcome.folders.insert(told(entry.path()));
        continue;
      }
      std::ifstream file(entry.path(), std::ios::binary);
      const std::string content{std::istreambuf_iterator<char>(file), {}};
      outcome.files[told(entry.path())] = plain::Bytes(content.begin(), content.end());
    }
  }

 private:
  std::string told_;
  TemporaryFolder folder_;
};

FakeMedium medium_of(const plain::Device& device) {
  FakeMedium medium;
  medium.bytes = device.bytes;
  medium.unreadable = device.unreadable;
  medium.position_past_end_fails = device.seek_past_end_fails;
  medium.gone_after_sector = device.gone_after_sector;
  medium.open_error = device.openable ? 0 : device.open_errno;
  // Both ways of failing are met: half of the devices shorten a block, half refuse it.
  if (device.gone_after_sector) medium.largest_read = sector_size;
  medium.blocks_fail_whole = device.bytes.size() % 1024 >= 512;
  return medium;
}

ScanRequest request_of(const plain::Search& search, const fs::path& destination) {
  ScanRequest request;
  request.Recovery_MODE = search.mode;
  request.sectors_val = search.sectors_val;
  request.entire_disk = search.entire_disk;
  request.sector_range = !search.entire_disk;
  request.start_slider_val = decimal(search.range_start);
  request.end_slider_val = decimal(search.range_end);
  request.thorough = search.thorough;
  request.destination = destination;
  request.Rec_Folder_Name = search.results_folder;
  return request;
}

// What an outside observer sees of the recorded operations.
std::vector<plain::Event> visible_events(const Recorder& recorder, const Place& place) {
  using plain::EventKind;
  std::vector<plain::Event> events;
  for (const Recorded& entry : recorder.recorded()) {
    if (const auto* operation = std::get_if<ScanOperation>(&entry)) {
      if (const auto* pass = std::get_if<operation::BeginPass>(operation)) {
        events.push_back({.kind = EventKind::kModeLabel,
                          .pass = pass->pass == Pass::general ? "GEN" : "THD",
                          .text = utf8_from_text(pass->label)});
      } else if (const auto* notice = std::get_if<operation::ShowClearingNotice>(operation)) {
        events.push_back({.kind = EventKind::kClearing, .text = utf8_from_text(notice->text)});
      }
    } else if (const auto* report = std::get_if<Report>(&entry)) {
      events.push_back({.kind = EventKind::kReport,
                        .path = place.told(report->path),
                        .name = utf8_from_text(report->name),
                        .uid = utf8_from_text(report->uid)});
    } else if (const auto* box = std::get_if<MessageBox>(&entry)) {
      if (box->text == unable_saving_Msg) {
        events.push_back({.kind = EventKind::kMessage, .text = "\n" + utf8_from_text(box->text)});
      } else {
        events.push_back({.kind = EventKind::kExceptionMessage});
      }
    } else if (const auto* permission = std::get_if<PermissionAlert>(&entry)) {
      events.push_back(
          {.kind = EventKind::kDeviceError, .error_number = permission->error, .permission = true});
    } else if (const auto* generic = std::get_if<GenericAlert>(&entry)) {
      events.push_back({.kind = EventKind::kDeviceError, .error_number = generic->error});
    } else if (std::holds_alternative<FinalScreenPosted>(entry)) {
      events.push_back({.kind = EventKind::kFinalScreen});
    }
  }
  return events;
}

}  // namespace

plain::Outcome run_engine(const plain::Search& search, bool with_helper) {
  const Place place(search);
  FakeMedium medium = medium_of(search.device);
  FakeOpener opener(medium);
  Recorder recorder;
  for (std::uint64_t i = 0; i < search.initial_shown_item_count; ++i) {
    recorder.gallery.addImageWithPath("/earlier", u"earlier", u"earlier");
  }
  ScanState state;
  ProgressTimer timer;
  std::uint64_t reports = 0;
  recorder.on_report = [&](const Report&) {
    if (++reports == search.stop_after_reports) state.stop_now = 1;
  };
  const ScanRequest request = request_of(search, place.root());
  SignatureTables tables;
  tables.Ext_Array = search.general;
  tables.Adv_Ext_Array = search.thorough_table;
  const ScanContext context{.request = request,
                            .state = state,
                            .opener = opener,
                            .results = recorder,
                            .operations = recorder,
                            .timer = timer,
                            .read_with_helper = with_helper};
  if (search.mode == 0) {
    Photo_Rec_Thread(context, tables);
    state.pFile_op.abandon();
  } else {
    for (const Text& type : search.row_types) {
      recorder.found_files.createSignatureListTableRecord(type, 0, u"", {}, type);
    }
    Raw_File_Rec_Thread(context, {search.general, search.thorough_table});
  }

  plain::Outcome outcome;
  outcome.events = visible_events(recorder, place);
  const bool ran_to_its_end = state.outcome == SearchOutcome::completed;
  const bool second_pass = recorder.all<operation::BeginPass>().size() == 2;
  outcome.general_result = second_pass || ran_to_its_end;
  if (second_pass) outcome.thorough_result = ran_to_its_end;
  for (std::size_t i = 0; i < recorder.found_files.size(); ++i) {
    const FoundFilesRow row = recorder.found_files.row(i);
    outcome.rows.push_back({.FileTypes = utf8_from_text(row.FileTypes),
                            .NoOfFile = utf8_from_text(row.NoOfFile),
                            .FileName = utf8_from_text(row.FileName),
                            .FilePath = place.told(row.FilePath),
                            .FileTypes_Hidden = utf8_from_text(row.FileTypes_Hidden)});
  }
  outcome.shown_item_count = recorder.gallery.Shown_Item_Count();
  place.collect(outcome);
  return outcome;
}
