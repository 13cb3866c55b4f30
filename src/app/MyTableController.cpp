#include "app/MyTableController.h"

#include <thread>
#include <utility>

#include "engine/FinalScreen.h"

namespace norvo {

MyTableController* App_DefaultInstance = nullptr;
MyTableController* Main_App_wnd = nullptr;

MyTableController::MyTableController(TextView bundle_name, DeviceOpener& opener,
                                     ScanOperations& operations, ReportListener& listener)
    : profile_(select_edition(bundle_name)),
      opener_(opener),
      operations_(operations),
      listener_(listener) {
  App_DefaultInstance = this;
  Main_App_wnd = defaultInstance();
}

MyTableController::~MyTableController() {
  state_.stop_now = 1;
  worker_.wait();
  Main_App_wnd = nullptr;
  App_DefaultInstance = nullptr;
}

MyTableController* MyTableController::defaultInstance() {
  return App_DefaultInstance;
}

void MyTableController::load_signature_tables(const std::filesystem::path& resource_folder) {
  tables_.load(resource_folder, profile_.signature_files);
}

void MyTableController::start_search(const ScanRequest& request, FileWitnesses* witnesses,
                                     std::function<void()> ended) {
  worker_.wait();
  timer_.invalidate();
  request_ = request;
  const ScanContext context{.request = request_,
                            .state = state_,
                            .opener = opener_,
                            .results = *this,
                            .operations = operations_,
                            .timer = timer_,
                            .read_with_helper = std::thread::hardware_concurrency() > 1,
                            .witnesses = witnesses};
  std::function<void()> work;
  if (request_.Recovery_MODE == 0) {
    work = [this, context] { Photo_Rec_Thread(context, tables_); };
  } else {
    // The search has its tables to itself: the person may tick other types while it still waits for
    // its drive.
    work = [context, tables = selected_tables_] { Raw_File_Rec_Thread(context, tables); };
  }
  worker_.start(context, [work = std::move(work), ended = std::move(ended)] {
    work();
    if (ended) ended();
  });
}

void MyTableController::hand_over_selection(std::int32_t Recovery_MODE) {
  selected_tables_ = check_list_.selected_tables(tables_of_mode(tables_, Recovery_MODE));
  found_files_.clear();
  for (const FileTypeEntry& type : check_list_.rows()) {
    if (!type.State) continue;
    found_files_.createSignatureListTableRecord(type.Extension, 0, u"", {}, type.Extension);
  }
}

void MyTableController::wait_for_worker() {
  worker_.wait();
}

void MyTableController::Final_or_Stop_Screen() {
  norvo::Final_or_Stop_Screen(request_, state_, operations_);
}

bool MyTableController::stop_usb_disk(AlertPanel& panel) {
  return norvo::stop_usb_disk(panel, state_);
}

void MyTableController::addImageWithPath(const std::filesystem::path& path, TextView imageName,
                                         TextView image_UID) {
  const ItemReport report = gallery_.addImageWithPath(path, imageName, image_UID);
  listener_.file_reported(path, imageName, image_UID, report);
}

void MyTableController::addImageWithData(std::span<const std::byte> imageData, TextView imageName,
                                         TextView image_UID, ThumbnailMaker& maker) {
  const ItemReport report = gallery_.addImageWithData(imageData, imageName, image_UID, maker);
  listener_.file_reported({}, imageName, image_UID, report);
}

void MyTableController::addImageWithPath_2(const std::filesystem::path& path, TextView imageName,
                                           TextView image_UID) {
  const ItemReport report = gallery_.addImageWithPath_2(path, imageName, image_UID);
  if (report.item_added) found_files_.count_file(path, imageName);
  listener_.file_reported(path, imageName, image_UID, report);
}

void MyTableController::empty_images() {
  gallery_.empty_images();
  listener_.images_emptied();
}

}  // namespace norvo
