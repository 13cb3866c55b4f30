#include "engine/ScanWorker.h"

#include <utility>

#include "engine/PhotoScan.h"
#include "engine/Progress.h"
#include "engine/RawFileScan.h"

namespace norvo {

namespace {

void begin_search(const ScanContext& context) {
  context.state.stop_screen_already_show = 0;
  context.state.outcome = SearchOutcome::completed;
}

bool wants_thorough_pass(const ScanContext& context) {
  return context.request.thorough && context.state.stop_screen_already_show == 0;
}

// The streams are the pass's own until it returns.
template <typename Work>
bool run_pass(const ScanContext& context, const Work& work) {
  context.state.pass_running = true;
  const bool result = work();
  context.state.pass_running = false;
  return result;
}

bool photo_pass(const ScanContext& context, Pass pass, const SignatureTable& table) {
  return run_pass(context, [&] { return PhotoScan(context, pass, table).Photo_Recovey_Mode(); });
}

bool raw_file_pass(const ScanContext& context, Pass pass, const SignatureTable& table) {
  return run_pass(context,
                  [&] { return RawFileScan(context, pass, table).Raw_File_Recovey_Mode(); });
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
  post_final_screen_once(context);
}

void Raw_File_Rec_Thread(const ScanContext& context, const SelectedTables& tables) {
  begin_search(context);
  if (!raw_file_pass(context, Pass::general, tables.CheckListHeader_Array)) {
    post_final_screen_once(context);
    return;
  }
  if (wants_thorough_pass(context)) {
    static_cast<void>(raw_file_pass(context, Pass::thorough, tables.CheckListHeader_Adv_Array));
  }
  if (context.operations.main_window_is_modal()) {
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
