#include "window/flow/WindowFlow.h"

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QApplication>
#include <QBuffer>
#include <QDialog>
#include <QFileDialog>
#include <QLineEdit>
#include <QMessageBox>
#include <QTest>
#include <algorithm>

#include "platform/qt/QtText.h"

namespace norvo::test {
namespace fs = std::filesystem;
namespace {

// The card under its mount path.
class OneCard final : public DiskUtility {
 public:
  OneCard(std::uint64_t bytes, std::function<void()> looked_for)
      : bytes_(bytes), looked_for_(std::move(looked_for)) {}
  std::vector<fs::path> mountedRemovableMedia() override {
    if (looked_for_) looked_for_();
    return {"/media/card"};
  }
  std::vector<fs::path> mountedLocalVolumePaths() override { return mountedRemovableMedia(); }
  std::optional<DiskReport> info(const fs::path& /*path*/) override {
    DiskReport report;
    report.set("DeviceIdentifier", u"sdx1");
    report.set("VolumeName", u"HOLIDAYS");
    report.set("FilesystemUserVisibleName", u"MS-DOS (FAT32)");
    report.set("IOKitSize", bytes_);
    report.set("ParentWholeDisk", u"sdx");
    report.set("BusProtocol", u"USB");
    return report;
  }

 private:
  std::uint64_t bytes_;
  std::function<void()> looked_for_;
};

// What stands on a button, without the mnemonic's mark.
std::string caption(const QAbstractButton& button) {
  return button.text().remove(QLatin1Char('&')).toStdString();
}

QAbstractButton* find_button(QWidget& dialog, const std::string& name) {
  for (QAbstractButton* button : dialog.findChildren<QAbstractButton*>()) {
    if (button->objectName().toStdString() == name || caption(*button) == name) return button;
  }
  return nullptr;
}

std::uint64_t size_of(const FakeMedium& medium) {
  return medium.made_sectors != 0 ? medium.made_sectors * sector_size : medium.bytes.size();
}

}  // namespace

DialogAnswers::DialogAnswers() {
  connect(&timer_, &QTimer::timeout, this, &DialogAnswers::look);
  timer_.start(5);
}

void DialogAnswers::expect(const std::string& dialog, const std::string& button) {
  expected_.push_back({dialog, button, {}});
}

void DialogAnswers::expect_folder(const fs::path& folder) {
  expected_.push_back({"folder_chooser", "", folder});
}

void DialogAnswers::expect_image(const fs::path& image) {
  expected_.push_back({"image_chooser", "", image});
}

void DialogAnswers::look() {
  if (expected_.empty()) return;
  for (QWidget* widget : QApplication::topLevelWidgets()) {
    if (!widget->isVisible() || widget->objectName().toStdString() != expected_.front().dialog) {
      continue;
    }
    const Expected expected = expected_.front();
    expected_.pop_front();
    answered_.push_back(expected.dialog);
    if (const auto* alert = qobject_cast<QMessageBox*>(widget)) {
      alerts_.push_back(to_text(alert->text()));
    }
    if (on_dialog) on_dialog(*widget);
    answer(*widget, expected);
    return;
  }
}

void DialogAnswers::answer(QWidget& dialog, const Expected& expected) {
  if (auto* chooser = qobject_cast<QFileDialog*>(&dialog)) {
    if (expected.chosen.empty()) return chooser->reject();
    chooser->selectFile(path_to_qt(expected.chosen));
    return static_cast<QDialog*>(chooser)->accept();
  }
  if (expected.button == "Escape") {
    QTest::keyClick(&dialog, Qt::Key_Escape);
    return;
  }
  QAbstractButton* const button = find_button(dialog, expected.button);
  if (button == nullptr) qFatal("no button %s", expected.button.c_str());
  QTest::mouseClick(button, Qt::LeftButton);
}

WindowFlow::WindowFlow(FakeMedium& medium, TextView bundle_name,
                       std::function<void()> looked_for_drives,
                       std::unique_ptr<PrivacyReset> privacy_reset)
    : opener_(medium) {
  const fs::path resources = folder_.path() / "Resources";
  fs::create_directories(resources);
  fs::create_directories(destination());
  for (const auto& file : fs::directory_iterator(NORVO_SIGNATURES)) {
    fs::copy(file, resources);
  }
  program_ = std::make_unique<WindowProgram>(WindowSurroundings{
      .bundle_name = Text(bundle_name),
      .bundle_identifier = u"org.norvo.recovery.test",
      .process_name = u"the program's file",
      .resource_folder = resources,
      .decoder = NORVO_DECODER,
      .player = NORVO_PLAYER,
      .opener = opener_,
      .disk_utility = std::make_unique<OneCard>(size_of(medium), std::move(looked_for_drives)),
      .sleep_guard = std::make_unique<RecordingSleepGuard>(sleep_asked),
      .privacy_reset = std::move(privacy_reset),
      .permission_help = u"Ask an administrator.",
      .raw_node = [](TextView identifier) { return fs::path("/dev") / fs::path(identifier); },
      .lies_on_device =
          [this](const fs::path& /*folder*/, const fs::path& device) {
            return lies_on_device && device == "/dev/sdx1";
          },
      .log = system_log});
  program_->show();
}

WindowFlow::~WindowFlow() = default;

void WindowFlow::click(Control control) {
  QWidget& target = widget(control);
  if (!target.isVisible() || !target.isEnabled()) {
    qFatal("%s cannot be clicked", std::string(control_name(control)).c_str());
  }
  QTest::mouseClick(&target, Qt::LeftButton, Qt::NoModifier,
                    QPoint(std::min(12, target.width() / 2), target.height() / 2));
}

void WindowFlow::select_row(Control table, int row) {
  auto* const view = qobject_cast<QAbstractItemView*>(&widget(table));
  const QRect place = view->visualRect(view->model()->index(row, 0));
  QTest::mouseClick(view->viewport(), Qt::LeftButton, Qt::NoModifier, place.center());
}

void WindowFlow::type(Control field, const QString& text) {
  auto* const line = qobject_cast<QLineEdit*>(&widget(field));
  line->setFocus();
  line->selectAll();
  QTest::keyClick(line, Qt::Key_Delete);
  QTest::keyClicks(line, text);
}

bool WindowFlow::wait_until(const std::function<bool()>& done) {
  constexpr int patience = 240'000;  // milliseconds
  return QTest::qWaitFor(done, patience);
}

void WindowFlow::choose_destination(Control browse_button) {
  dialogs.expect("Browse_Info", "Continue_Btn");
  dialogs.expect_folder(destination());
  click(browse_button);
}

bool WindowFlow::search_to_the_end() {
  dialogs.expect("SaveFile_Info", "OK_Btn");
  click(Control::next_btn);
  return wait_until([this] { return dialogs.all_answered() && is_enabled(Control::back_btn); });
}

std::vector<std::uint8_t> card_with_photos(int photos) {
  std::vector<std::uint8_t> card(sector_size);
  for (int i = 0; i < photos; ++i) {
    QImage picture(60, 40, QImage::Format_RGB32);
    picture.fill(QColor::fromHsv(i * 37 % 360, 200, 200));
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    picture.save(&buffer, "JPEG");
    card.insert(card.end(), bytes.begin(), bytes.end());
    card.resize((card.size() / sector_size + 3) * sector_size);
  }
  return card;
}

}  // namespace norvo::test
