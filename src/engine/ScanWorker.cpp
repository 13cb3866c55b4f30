#include "engine/ScanWorker.h"

#include <utility>

#include "engine/PhotoScan.h"
#include "engine/Progress.h"
#include "engine/RawFileScan.h"

namespace norvo {

namespace {

// The streams are the search's from here to its end, also between its passes.
void begin_search(const ScanContext& context) {
  context.state.pass_running = true;
  context.state.stop_screen_already_show = 0;
  context.state.outcome = SearchOutcome::completed;
}

bool wants_thorough_pass(const ScanContext& context) {
  return context.request.thorough && context.state.stop_screen_already_show == 0;
}

bool photo_pass(const ScanContext& context, Pass pass, const SignatureTable& table) {
  return PhotoScan(context, pass, table).Photo_Recovey_Mode();
}

bool raw_file_pass(const ScanContext& context, Pass pass, const SignatureTable& table) {
  return RawFileScan(context, pass, table).Raw_File_Recovey_Mode();
}

void post_final_screen_once(const ScanContext& context) {
  if (context.state.stop_screen_already_show != 0) return;
  context.operations.post_Final_or_Stop_Screen();
}

}  // namespace

void Photo_Rec_Thread(const ScanContext& context, const SignatureTables& tables) {
  begin_search(context);
  if (photo_pass(context, Pass::general, tables.Ext_Array) && wants_thorough_pass(context)) {
    static_cast<void>(photo_pass(context, Pass::thorough, tables.Adv_Ext_Array));
  }
  context.state.pass_running = false;
  post_final_screen_once(context);
}

void Raw_File_Rec_Thread(const ScanContext& context, const SelectedTables& tables) {
  begin_search(context);
  const bool general_ended = raw_file_pass(context, Pass::general, tables.CheckListHeader_Array);
  if (general_ended && wants_thorough_pass(context)) {
    static_cast<void>(raw_file_pass(context, Pass::thorough, tables.CheckListHeader_Adv_Array));
  }
  context.state.pass_running = false;
  if (general_ended && context.operations.main_window_is_modal()) {
    context.state.stop_now = 1;
  } else {
    post_final_screen_once(context);
  }
}

void ScanWorker::start(const ScanContext& context, std::function<void()> work) {
  wait();
  // The timer first: a pass that fails at once invalidates it, which must not be overtaken.
  context.timer.start([&state = context.state, &operations = context.operations] {
    timerTickSetLabel(state, operations);
  });
  thread_ = std::thread(std::move(work));
}

void ScanWorker::wait() {
  if (thread_.joinable()) thread_.join();
}

}  // namespace norvo
