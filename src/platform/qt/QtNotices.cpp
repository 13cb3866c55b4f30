#include "platform/qt/QtNotices.h"

#include <QCoreApplication>
#include <QFileDialog>
#include <utility>

#include "platform/qt/ExactProgressBar.h"
#include "platform/qt/MailLink.h"
#include "platform/qt/QtText.h"
#include "platform/qt/Theme.h"

namespace norvo {
namespace {

using namespace Qt::StringLiterals;

// A sheet inside the window, and no window of its own: it comes and goes by itself, and a window
// manager may give a window the keyboard that is gone already.
NoticeWindow* make_sheet(const NoticeWindow::Look& look, QWidget& window) {
  auto* const sheet = new NoticeWindow(look, &window);
  sheet->setWindowFlags(Qt::Widget);
  sheet->setAttribute(Qt::WA_StyledBackground);
  sheet->setProperty("look", u"sheet"_s);
  // Else it would be shown with the window.
  sheet->hide();
  return sheet;
}

}  // namespace

QtNotices::QtNotices(QWidget& window, ContactTexts contact, std::function<Text()> saved_place,
                     std::function<void(std::string_view)> clicked)
    : window_(window),
      contact_(std::move(contact)),
      saved_place_(std::move(saved_place)),
      clicked_(std::move(clicked)) {
  browse_info_ = new NoticeWindow(
      {.object_name = u"Browse_Info"_s,
       .icon = u"drive"_s,
       .title = u"Choose a folder on another drive"_s,
       .text = u"Never save to the card or drive that is searched: what is written there takes the "
               u"place of what is still to be found, and that is then lost for good. Choose a "
               u"folder on your computer or on another drive, with enough free space."_s,
       .button_name = u"Continue_Btn"_s,
       .button_caption = u"&Continue"_s},
      &window_);
  make_save_file_info();
  load_drive_ = make_sheet({.object_name = u"LoadDrive_Modeless"_s,
                            .icon = u"card"_s,
                            .title = u"Looking for drives…"_s,
                            .text = u"This takes a moment."_s,
                            .button_name = {},
                            .button_caption = {}},
                           window_);
  auto* busy = new ExactProgressBar;
  busy->setAccessibleName(u"Looking for drives"_s);
  busy->set_value(std::nullopt);
  load_drive_->more().addWidget(busy);
  clear_preview_ =
      make_sheet({.object_name = u"ClearPreview_Modeless"_s,
                  .icon = u"photo"_s,
                  .title = u"Making room for more photos…"_s,
                  .text = u"The thumbnails that were shown so far are taken out of the "
                          u"gallery. The photos themselves stay saved, and the search "
                          u"goes on in a moment."_s,
                  .button_name = {},
                  .button_caption = {}},
                 window_);
  help_support_ = new ContactDialog(contact_, clicked_, &window_);
}

void QtNotices::make_save_file_info() {
  save_file_info_ = new NoticeWindow({.object_name = u"SaveFile_Info"_s,
                                      .icon = u"check"_s,
                                      .title = u"The search has ended"_s,
                                      .text = u"What was found is saved in this folder:"_s,
                                      .button_name = u"OK_Btn"_s,
                                      .button_caption = u"&OK"_s},
                                     &window_);
  saved_path_ = new PathLabel(NoticeWindow::text_width);
  scale_font(*saved_path_, 1.0, QFont::DemiBold);
  auto* advice = new QuietLabel(
      u"Open some of the files to see whether they are complete. Is something missing? A search "
      u"with other settings may find it, and we are glad to help."_s);
  advice->setFixedWidth(NoticeWindow::text_width);
  save_file_info_->more().addWidget(saved_path_);
  save_file_info_->more().addWidget(advice);
  if (contact_.support_address.empty()) return;
  auto* support = new MailLink(contact_.support_address, u"Open_Support_Mail"_s);
  QObject::connect(support, &QPushButton::clicked, save_file_info_,
                   [this] { clicked_("Open_Support_Mail"); });
  save_file_info_->more().addWidget(support, 0, Qt::AlignLeft);
}

int QtNotices::run_Browse_Info() {
  return browse_info_->run();
}

void QtNotices::hide_Browse_Info() {
  browse_info_->hide();
}

std::optional<std::filesystem::path> QtNotices::choose_folder() {
  QFileDialog dialog(&window_, u"Choose Destination Folder"_s);
  dialog.setObjectName(u"folder_chooser"_s);
  dialog.setFileMode(QFileDialog::Directory);
  dialog.setOption(QFileDialog::ShowDirsOnly);
  dialog.setWindowModality(Qt::WindowModal);
  if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty()) return std::nullopt;
  return to_path(dialog.selectedFiles().first());
}

int QtNotices::run_SaveFile_Info() {
  saved_path_->setText(to_qt(saved_place_()));
  return save_file_info_->run();
}

void QtNotices::close_SaveFile_Info() {
  save_file_info_->hide();
}

void QtNotices::show_sheet(NoticeWindow& sheet) {
  sheet.adjustSize();
  QRect place = sheet.rect();
  place.moveCenter(window_.rect().center());
  sheet.setGeometry(place);
  sheet.show();
  sheet.raise();
}

void QtNotices::show_LoadDrive() {
  show_sheet(*load_drive_);
  // The rebuild keeps the event loop busy, so it is drawn and sent to the screen now.
  load_drive_->repaint();
  QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
}

void QtNotices::hide_LoadDrive() {
  load_drive_->hide();
  window_.raise();
  window_.activateWindow();
}

void QtNotices::show_ClearPreview() {
  show_sheet(*clear_preview_);
}

void QtNotices::hide_ClearPreview() {
  clear_preview_->hide();
}

void QtNotices::run_Help_Support() {
  help_support_->run();
  help_support_->hide();
}

}  // namespace norvo
