// The controller: owns the program's run-time state for the life of the process and joins the
// rooms. It delegates; it does not compute.
//
// Exactly one exists. It is made on the main thread, after which App_DefaultInstance and
// Main_App_wnd refer to it; they are null before and after its life.
#pragma once

#include <cstdint>
#include <filesystem>
#include <functional>
#include <optional>
#include <span>

#include "app/EditionProfile.h"
#include "engine/PassSteps.h"
#include "engine/ProgressTimer.h"
#include "engine/ScanOperations.h"
#include "engine/ScanResults.h"
#include "engine/ScanState.h"
#include "engine/ScanWorker.h"
#include "results/FoundFilesTable.h"
#include "results/Gallery.h"
#include "sigdb/FileTypeCheckList.h"
#include "sigdb/SignatureTables.h"
#include "util/Alert.h"
#include "wizard/WizardState.h"

namespace norvo {

// Who wants to know of the reports of a search, in their order and on the worker thread.
class ReportListener {
 public:
  virtual ~ReportListener() = default;
  // `path` is empty for a photo that exists in memory only.
  virtual void file_reported(const std::filesystem::path& path, TextView imageName,
                             TextView image_UID, const ItemReport& report) = 0;

  // The list of shown items was emptied.
  virtual void images_emptied() = 0;
};

class MyTableController final : private ScanResults {
 public:
  // `bundle_name` selects the edition. What is referred to outlives the controller.
  MyTableController(TextView bundle_name, DeviceOpener& opener, ScanOperations& operations,
                    ReportListener& listener);
  ~MyTableController() override;
  MyTableController(const MyTableController&) = delete;
  MyTableController& operator=(const MyTableController&) = delete;

  // The one controller, or null before it exists.
  static MyTableController* defaultInstance();

  const EditionProfile& profile() const { return profile_; }
  const SignatureTables& tables() const { return tables_; }
  ScanState& state() { return state_; }
  Gallery& gallery() { return gallery_; }

  // Loads the edition's signature files; part of the interface's set-up, once.
  void load_signature_tables(const std::filesystem::path& resource_folder);

  // The check list of the request's search type, as the person ticks it.
  FileTypeCheckList& check_list() { return check_list_; }
  const FoundFilesTable& found_files() const { return found_files_; }

  // Makes the tables of the ticked types of a search type other than photos, and the row that each
  // gets in the found-files table, in place of the previous ones.
  void hand_over_selection(std::int32_t Recovery_MODE);

  // Starts the search of the request's type on the worker thread, with its timer. The previous one
  // has ended, or is waited for. Other searches than for photos take the tables that were handed
  // over last. `witnesses` see what the files consist of, and outlive the search; null for nobody.
  // `ended` is the last that the worker does.
  void start_search(const ScanRequest& request, FileWitnesses* witnesses = nullptr,
                    std::function<void()> ended = {});

  // Returns when the worker has ended.
  void wait_for_worker();

  // The end-of-search screen. Main thread.
  void Final_or_Stop_Screen();

  // The Stop button. True when the person wants the stop. Main thread.
  bool stop_usb_disk(AlertPanel& panel);

  // Reports a photo that exists as encoded bytes only, as the gallery takes it. The thread that
  // reports the search's files; `maker` is asked on it.
  void addImageWithData(std::span<const std::byte> imageData, TextView imageName,
                        TextView image_UID, ThumbnailMaker& maker);

  // Where the person is in the wizard. Main thread.
  WizardState wizard;

 private:
  void addImageWithPath(const std::filesystem::path& path, TextView imageName,
                        TextView image_UID) override;
  void addImageWithPath_2(const std::filesystem::path& path, TextView imageName,
                          TextView image_UID) override;
  std::optional<std::uint64_t> NoOfFile(TextView FileTypes_Hidden) const override {
    return found_files_.NoOfFile(FileTypes_Hidden);
  }
  std::uint64_t Shown_Item_Count() const override { return gallery_.Shown_Item_Count(); }
  void reset_Shown_Item_Count() override { gallery_.reset_Shown_Item_Count(); }
  void empty_images() override;

  EditionProfile profile_;
  DeviceOpener& opener_;
  ScanOperations& operations_;
  ReportListener& listener_;
  SignatureTables tables_;
  FileTypeCheckList check_list_;
  SelectedTables selected_tables_;
  Gallery gallery_;
  FoundFilesTable found_files_;
  ScanState state_;
  ScanRequest request_;
  ProgressTimer timer_;
  ScanWorker worker_;
};

// The one controller through which worker threads and dialogs reach the program's state.
extern MyTableController* App_DefaultInstance;
extern MyTableController* Main_App_wnd;

}  // namespace norvo
