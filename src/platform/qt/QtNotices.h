// The notice windows "Browse_Info", "SaveFile_Info", "LoadDrive_Modeless", "ClearPreview_Modeless"
// and "Help_Support", and the folder chooser "folder_chooser". Main thread.
#pragma once

#include <functional>
#include <string_view>

#include "platform/qt/ContactDialog.h"
#include "platform/qt/Labels.h"
#include "platform/qt/NoticeWindow.h"
#include "platform/qt/PathLabel.h"
#include "wizard/Notices.h"
#include "wizard/SavedNotice.h"

namespace norvo {

class QtNotices : public Notices {
 public:
  // The notices belong to `window`, which outlives this object or dies with it. `saved` says
  // what the notice after a search tells, asked when it is shown. `clicked` hears the name of each
  // button of the contact dialog, and "Open_Support_Mail" of the support address after a search.
  QtNotices(QWidget& window, ContactTexts contact, std::function<SavedNotice()> saved,
            std::function<void(std::string_view name)> clicked);

  int run_Browse_Info() override;
  void hide_Browse_Info() override;
  std::optional<std::filesystem::path> choose_folder() override;
  int run_SaveFile_Info() override;
  void close_SaveFile_Info() override;
  void show_LoadDrive() override;
  void hide_LoadDrive() override;
  void show_ClearPreview() override;
  void hide_ClearPreview() override;
  void run_Help_Support() override;

 private:
  void make_save_file_info();
  void show_sheet(NoticeWindow& sheet);

  QWidget& window_;
  ContactTexts contact_;
  std::function<SavedNotice()> saved_;
  std::function<void(std::string_view)> clicked_;
  NoticeWindow* BrowseInfo_Window_;
  NoticeWindow* SaveFile_Info_Window_ = nullptr;
  PathLabel* saved_path_ = nullptr;
  QuietLabel* saved_advice_ = nullptr;
  NoticeWindow* LoadDisk_Window_;
  NoticeWindow* ClearPreview_Window_;
  ContactDialog* HelpWindow_;
};

}  // namespace norvo
