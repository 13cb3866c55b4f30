#include "platform/qt/MainWindow.h"

#include <QCloseEvent>
#include <QPushButton>
#include <QVBoxLayout>
#include <utility>

#include "platform/qt/ActReporter.h"
#include "platform/qt/CheckListScreen.h"
#include "platform/qt/DrivesScreen.h"
#include "platform/qt/Footer.h"
#include "platform/qt/FoundFilesScreen.h"
#include "platform/qt/GalleryScreen.h"
#include "platform/qt/ProgressPanel.h"
#include "platform/qt/QtText.h"
#include "platform/qt/SettingsScreen.h"
#include "platform/qt/Theme.h"

namespace norvo {
namespace {

using namespace Qt::StringLiterals;

}  // namespace

MainWindow::MainWindow(WindowContent content) : header_(new Header(controls_)), body_(new QWidget) {
  setObjectName(u"main_window"_s);
  auto* column = new QVBoxLayout(this);
  column->setContentsMargins(0, 0, 0, 0);
  column->setSpacing(0);
  column->addWidget(body_, 1);
  auto* body = new QVBoxLayout(body_);
  body->setContentsMargins(4 * unit, 3 * unit, 4 * unit, 2 * unit);
  body->setSpacing(2 * unit);
  body->addWidget(header_);
  make_pages(std::move(content));
  // After the pages, so that the Tab key comes to them first.
  column->addWidget(new Footer(controls_));
  make_data_labels();
  for (const Control control : {Control::next_btn, Control::back_btn, Control::exit_btn,
                                Control::help_btn, Control::contact_btn, Control::help_info}) {
    controls_.set_hidden(control, false);
  }
  report_acts(controls_, events_);
  // The wizard hears of the click first, then of the file.
  connect(qobject_cast<QPushButton*>(&widget(Control::open_image_btn)), &QPushButton::clicked,
          drives_, &DrivesScreen::choose_image);
  report_results(Control::imageBrowser, gallery_->view());
  report_results(Control::imageBrowser_2, found_files_->view());
  check_list_->table().source_model().on_ticked([this](std::size_t row, bool on) {
    if (events_ != nullptr) events_->ticked(row, on);
  });
  setMinimumSize(900, 600);
  resize(1080, 720);
}

void MainWindow::make_pages(WindowContent content) {
  drives_ = new DrivesScreen(controls_, std::move(content.drives),
                             [this](const std::filesystem::path& image) {
                               if (events_ != nullptr) events_->disk_image_chosen(image);
                             });
  check_list_ = new CheckListScreen(controls_, std::move(content.check_list));
  gallery_ = new GalleryScreen(controls_, content.gallery, content.thumbnails,
                               std::move(content.mark_no_preview));
  found_files_ = new FoundFilesScreen(controls_, std::move(content.found_files), content.gallery);
  add_page(drives_, Step::drive, u"Choose a drive"_s);
  add_page(new SettingsScreen(controls_, SettingsPage::photo), Step::settings,
           u"Search settings"_s);
  add_page(new SettingsScreen(controls_, SettingsPage::signature), Step::settings,
           u"Search settings"_s);
  add_page(check_list_, Step::file_types, u"File types"_s);
  add_page(gallery_, Step::search, u"Photo search"_s);
  add_page(found_files_, Step::search, u"File search"_s);
  auto* progress = new ProgressPanel(controls_);
  body_->layout()->addWidget(progress);
  controls_.add_container(progress);
}

void MainWindow::add_page(QWidget* page, Step step, const QString& title) {
  static_cast<QVBoxLayout*>(body_->layout())->addWidget(page, 1);
  controls_.add_container(page, [this, page, step, title](bool visible) {
    if (!visible) return;
    header_->show_step(step, title);
    // Later, when all controls of the page are there.
    QMetaObject::invokeMethod(
        this, [this, page] { focus_first(*page); }, Qt::QueuedConnection);
  });
}

void MainWindow::focus_first(const QWidget& page) {
  // A focus that the person or the wizard chose stays; Exit has it when nothing else could.
  const QWidget* const now = focusWidget();
  if (now != nullptr && now->isVisible() && now != &widget(Control::exit_btn)) return;
  for (QWidget* next = page.nextInFocusChain(); next != &page; next = next->nextInFocusChain()) {
    const bool takes_keys = (next->focusPolicy() & Qt::TabFocus) != 0;
    if (takes_keys && next->isVisible() && next->isEnabled() && page.isAncestorOf(next)) {
      next->setFocus(Qt::OtherFocusReason);
      return;
    }
  }
}

void MainWindow::make_data_labels() {
  auto* never_shown = new QWidget(this);
  never_shown->hide();
  controls_.add(Control::disk_identifier, new QLabel(never_shown), u"Disk identifier"_s);
  controls_.add(Control::sectors_val, new QLabel(never_shown), u"Number of sectors"_s);
}

void MainWindow::report_results(Control control, ResultView& view) {
  view.on_acts({
      .double_clicked =
          [this, control](std::size_t index) {
            if (events_ != nullptr) events_->double_clicked(control, index);
          },
      .selection_changed =
          [this, control] {
            if (events_ != nullptr) events_->selection_changed(control);
          },
      .removed =
          [this, control](const std::vector<std::size_t>& indexes) {
            if (events_ != nullptr) events_->removed(control, indexes);
          },
      .moved =
          [this, control](const std::vector<std::size_t>& indexes, std::size_t destination) {
            if (events_ != nullptr) events_->moved(control, indexes, destination);
          },
  });
}

void MainWindow::set_text(Control control, TextView text) {
  controls_.set_text(control, text);
}

Text MainWindow::text(Control control) const {
  return controls_.text(control);
}

void MainWindow::set_hidden(Control control, bool hidden) {
  controls_.set_hidden(control, hidden);
  // A search can be stopped from its beginning to its end, and at no other time.
  if (control == Control::stop_scan) follow_search(!hidden);
}

void MainWindow::follow_search(bool running) {
  gallery_->follow_search(running);
  found_files_->follow_search(running);
}

void MainWindow::set_enabled(Control control, bool enabled) {
  controls_.set_enabled(control, enabled);
}

void MainWindow::set_on(Control control, bool on) {
  controls_.set_on(control, on);
  if (control == Control::rec_mode_Photo) header_->show_file_types(!on);
}

bool MainWindow::is_on(Control control) const {
  return controls_.is_on(control);
}

void MainWindow::set_range(Control control, double minimum, double maximum) {
  controls_.set_range(control, minimum, maximum);
}

void MainWindow::set_value(Control control, std::optional<double> value) {
  controls_.set_value(control, value);
}

double MainWindow::value(Control control) const {
  return controls_.value(control);
}

void MainWindow::focus(Control control) {
  controls_.focus(control);
}

void MainWindow::reload(Control control, bool scroll_to_last) {
  QWidget* const found = controls_.widget(control);
  if (auto* table = dynamic_cast<TableView*>(found)) {
    table->reload(scroll_to_last);
  } else if (auto* view = dynamic_cast<ResultView*>(found)) {
    view->reload(scroll_to_last);
  }
}

std::optional<std::size_t> MainWindow::selected_row(Control table) const {
  const QWidget* const found = controls_.widget(table);
  if (const auto* rows = dynamic_cast<const TableView*>(found)) return rows->selected_row();
  if (const auto* view = dynamic_cast<const ResultView*>(found)) return view->selected_index();
  return std::nullopt;
}

void MainWindow::select_row(Control table, std::size_t row) {
  if (auto* rows = dynamic_cast<TableView*>(controls_.widget(table))) rows->show_selected(row);
}

void MainWindow::set_title(TextView title) {
  setWindowTitle(to_qt(displayable(title)));
}

void MainWindow::closeEvent(QCloseEvent* event) {
  event->ignore();
  if (events_ != nullptr) events_->windowShouldClose();
}

}  // namespace norvo
