// The worker and timer threads of a search.
//
// One search at a time. Made, started, waited for and destroyed by one owner on the main thread;
// no thread is ever killed: destroying the worker while a search runs waits for it, so ask it to
// stop first.
#pragma once

#include <functional>
#include <thread>

#include "engine/PassSteps.h"
#include "sigdb/FileTypeCheckList.h"
#include "sigdb/SignatureTables.h"

namespace norvo {

// The worker's work for a photo search: the General pass, then, when it ran to its end and the
// thorough box is on, the Thorough pass, then the final screen unless a pass made sure that it is
// shown or not wanted. Blocks; worker thread.
void Photo_Rec_Thread(const ScanContext& context, const SignatureTables& tables);

// The worker's work for a search for videos, raw files or audio, over the selected records. As the
// photo search's, but that a dialog which holds the main window after a General pass that ran to
// its end gets a stop request instead of the final screen.
void Raw_File_Rec_Thread(const ScanContext& context, const SelectedTables& tables);

class ScanWorker {
 public:
  ScanWorker() = default;
  ScanWorker(const ScanWorker&) = delete;
  ScanWorker& operator=(const ScanWorker&) = delete;
  ~ScanWorker() { wait(); }

  // Starts `work` on a thread of its own and the progress timer on another. What `context` refers
  // to must outlive the search and the timer.
  void start(const ScanContext& context, std::function<void()> work);

  // Returns when the work of the last start has ended.
  void wait();

 private:
  std::thread thread_;
};

}  // namespace norvo
