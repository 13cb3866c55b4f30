#include "platform/qt/QtNotices.h"

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QFileDialog>
#include <QThread>
#include <QWindow>
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

// A window that was just shown has its place when the window system says so. Not waited for long:
// it may be covered or put away, and is then never said to be seen.
void wait_for_the_screen(const QWidget& window) {
  constexpr int patience = 1000;  // milliseconds
  const QWindow* const handle = window.windowHandle();
  if (handle == nullptr || !window.isVisible() || window.isMinimized()) return;
  const QDeadlineTimer end(patience);
  while (!handle->isExposed() && !end.hasExpired()) {
    QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
    QThread::msleep(1);
  }
}

}  // namespace

QtNotices::QtNotices(QWidget& window, ContactTexts contact, std::function<SavedNotice()> saved,
                     std::function<void(std::string_view)> clicked)
    : window_(window),
      contact_(std::move(contact)),
      saved_(std::move(saved)),
      clicked_(std::move(clicked)) {
  BrowseInfo_Window_ = new NoticeWindow(
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
  LoadDisk_Window_ = make_sheet({.object_name = u"LoadDrive_Modeless"_s,
                                 .icon = u"card"_s,
                                 .title = u"Looking for drives…"_s,
                                 .text = u"This takes a moment."_s,
                                 .button_name = {},
                                 .button_caption = {}},
                                window_);
  auto* busy = new ExactProgressBar;
  busy->setAccessibleName(u"Looking for drives"_s);
  busy->set_value(std::nullopt);
  LoadDisk_Window_->more().addWidget(busy);
  ClearPreview_Window_ =
      make_sheet({.object_name = u"ClearPreview_Modeless"_s,
                  .icon = u"photo"_s,
                  .title = u"Making room for more photos…"_s,
                  .text = u"The thumbnails that were shown so far are taken out of the "
                          u"gallery. The photos themselves stay saved, and the search "
                          u"goes on in a moment."_s,
                  .button_name = {},
                  .button_caption = {}},
                 window_);
  HelpWindow_ = new ContactDialog(contact_, clicked_, &window_);
}

void QtNotices::make_save_file_info() {
  SaveFile_Info_Window_ = new NoticeWindow({.object_name = u"SaveFile_Info"_s,
                                            .icon = u"check"_s,
                                            .title = u"The search has ended"_s,
                                            .text = {},
                                            .button_name = u"OK_Btn"_s,
                                            .button_caption = u"&OK"_s},
                                           &window_);
  saved_path_ = new PathLabel(NoticeWindow::text_width);
  scale_font(*saved_path_, 1.0, QFont::DemiBold);
  saved_advice_ = new QuietLabel;
  saved_advice_->setFixedWidth(NoticeWindow::text_width);
  SaveFile_Info_Window_->more().addWidget(saved_path_);
  SaveFile_Info_Window_->more().addWidget(saved_advice_);
  if (contact_.support_address.empty()) return;
  auto* support = new MailLink(contact_.support_address, u"Open_Support_Mail"_s);
  QObject::connect(support, &QPushButton::clicked, SaveFile_Info_Window_,
                   [this] { clicked_("Open_Support_Mail"); });
  SaveFile_Info_Window_->more().addWidget(support, 0, Qt::AlignLeft);
}

int QtNotices::run_Browse_Info() {
  return BrowseInfo_Window_->run();
}

void QtNotices::hide_Browse_Info() {
  BrowseInfo_Window_->hide();
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
  const SavedNotice saved = saved_();
  SaveFile_Info_Window_->set_text(to_qt(saved.text));
  saved_path_->setText(to_qt(saved.place));
  saved_advice_->setText(to_qt(saved.advice));
  return SaveFile_Info_Window_->run();
}

void QtNotices::close_SaveFile_Info() {
  SaveFile_Info_Window_->hide();
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
  show_sheet(*LoadDisk_Window_);
  // The rebuild keeps the event loop busy, so it is drawn and sent to the screen now; at the start
  // as soon as the screen has room for the window.
  wait_for_the_screen(window_);
  LoadDisk_Window_->repaint();
  QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
}

void QtNotices::hide_LoadDrive() {
  LoadDisk_Window_->hide();
  window_.raise();
  window_.activateWindow();
}

void QtNotices::show_ClearPreview() {
  show_sheet(*ClearPreview_Window_);
}

void QtNotices::hide_ClearPreview() {
  ClearPreview_Window_->hide();
}

void QtNotices::run_Help_Support() {
  HelpWindow_->run();
  HelpWindow_->hide();
}

}  // namespace norvo
