// The steps that the passes of every kind of search share. Worker thread.
#pragma once

#include <array>
#include <functional>

#include "engine/Device.h"
#include "engine/FileWitness.h"
#include "engine/OutputFolders.h"
#include "engine/ProgressTimer.h"
#include "engine/ScanOperations.h"
#include "engine/ScanRequest.h"
#include "engine/ScanResults.h"
#include "engine/ScanState.h"

namespace norvo {

// What a pass works with; everything outlives it.
struct ScanContext {
  const ScanRequest& request;
  ScanState& state;
  DeviceOpener& opener;
  ScanResults& results;
  ScanOperations& operations;
  ProgressTimer& timer;
  // Whether a second thread helps reading. The device must then allow read_block() from two
  // threads.
  bool read_with_helper = false;
  // Who sees what the files consist of; null for nobody.
  FileWitnesses* witnesses = nullptr;
};

// Sets the mode label and keeps its text for the timer.
void show_pass_label(const ScanContext& context, Pass pass);

void close_device(const ScanContext& context);

// Settles start_sector, end_sector, total_sector and the progress bar's limits from the request.
void settle_range(const ScanContext& context);

// Opens the device of the request. Returns 0, or the errno of the failure.
int open_device(const ScanContext& context);

// What differs between the kinds of search when the device cannot be opened.
struct OpenFailureExit {
  std::array<operation::ShowHideScreen, 2> screens;  // switched in this order
  operation::Control open_folder;                    // the button to hide
  bool resets_shown_items = false;
};

// What a pass does when its device cannot be opened. Waits for the alert.
void end_with_open_failure(const ScanContext& context, int error, const OpenFailureExit& exit);

// The settings that must not change while a scan runs.
void disable_settings(const ScanContext& context);
void show_scanning_help(const ScanContext& context);

// What a pass that shows the final screen itself does last: its streams are closed.
void end_with_final_screen(const ScanContext& context);

// What a pass does first when it ends before its range: stopped, or unable to save.
void begin_early_end(const ScanContext& context, SearchOutcome outcome);

// What a pass does when recovered data cannot be saved. `close_output` closes what was being
// written. Waits for the message box.
void end_with_saving_failure(const ScanContext& context, const std::function<void()>& close_output);

}  // namespace norvo
