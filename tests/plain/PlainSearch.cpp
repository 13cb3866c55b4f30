#include "PlainSearch.h"

#include "PlainController.h"
#include "PlainPhotoScan.h"
#include "PlainRawFileScan.h"

namespace plain {
namespace {

bool run_pass(Controller& controller, const std::string& pass) {
  if (controller.search.mode == 0) {
    return PhotoScan(controller, pass).Photo_Recovey_Mode();
  }
  return RawFileScan(controller, pass).Raw_File_Recovey_Mode();
}

}  // namespace

Outcome run(const Search& search) {
  Controller controller(search);
  Outcome outcome;
  controller.stop_screen_already_show = 0;
  outcome.general_result = run_pass(controller, "GEN");
  if (outcome.general_result && search.thorough && controller.stop_screen_already_show == 0) {
    outcome.thorough_result = run_pass(controller, "THD");
  }
  if (controller.stop_screen_already_show == 0) {
    controller.post_final_screen();
  }
  outcome.events = std::move(controller.events);
  outcome.files = controller.file_system.files();
  outcome.folders = controller.file_system.folders();
  outcome.shown_item_count = controller.Shown_Item_Count;
  outcome.rows = std::move(controller.nsSIGFileInfoDataObject);
  return outcome;
}

}  // namespace plain
