#include "engine/ScanWorker.h"

#include <utility>

#include "engine/PhotoScan.h"
#include "engine/Progress.h"

namespace norvo {

void Photo_Rec_Thread(const ScanContext& context, const SignatureTables& tables) {
  ScanState& state = context.state;
  state.stop_screen_already_show = 0;
  state.outcome = SearchOutcome::completed;
  if (PhotoScan(context, Pass::general, tables.Ext_Array).Photo_Recovey_Mode() &&
      context.request.thorough && state.stop_screen_already_show == 0) {
    static_cast<void>(
        PhotoScan(context, Pass::thorough, tables.Adv_Ext_Array).Photo_Recovey_Mode());
  }
  if (state.stop_screen_already_show == 0) context.operations.post_Final_or_Stop_Screen();
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
