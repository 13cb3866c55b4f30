// What is handed to the desktop to be opened, after real clicks.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QAbstractItemView>
#include <QDesktopServices>
#include <QTest>
#include <QUrl>
#include <filesystem>

#include "support/FileContent.h"
#include "window/flow/WindowFlow.h"

namespace norvo {
namespace {

namespace fs = std::filesystem;
using testing::ElementsAre;
using testing::IsEmpty;

// Stands for the person's programs as long as it lives.
class FileTaker : public QObject {
  Q_OBJECT

 public:
  FileTaker() { QDesktopServices::setUrlHandler("file", this, "take"); }
  ~FileTaker() override { QDesktopServices::unsetUrlHandler("file"); }

  Q_INVOKABLE void take(const QUrl& url) { taken.emplace_back(url.toLocalFile().toStdString()); }

  std::vector<fs::path> taken;
};

class OpenedFiles : public testing::Test {
 protected:
  bool search(test::WindowFlow& flow) {
    flow.select_drive();
    flow.click(Control::next_btn);
    flow.choose_destination();
    return flow.search_to_the_end();
  }

  static QAbstractItemView& gallery(test::WindowFlow& flow) {
    return *qobject_cast<QAbstractItemView*>(&flow.widget(Control::imageBrowser));
  }

  static void double_click_first(test::WindowFlow& flow) {
    QAbstractItemView& view = gallery(flow);
    ASSERT_TRUE(flow.wait_until([&view] { return view.model()->rowCount() == 1; }));
    const QPoint place = view.visualRect(view.model()->index(0, 0)).center();
    QTest::mouseClick(view.viewport(), Qt::LeftButton, {}, place);
    QTest::mouseDClick(view.viewport(), Qt::LeftButton, {}, place);
  }

  static fs::path results(test::WindowFlow& flow) {
    return flow.destination() / "Norvo Spruce Results" / "Photo Search";
  }

  test::FakeMedium medium_;
  FileTaker desktop_;
};

TEST_F(OpenedFiles, OpenFolderOpensTheResults) {
  medium_.bytes = test::card_with_photos(1);
  test::WindowFlow flow(medium_);
  ASSERT_TRUE(search(flow));
  flow.click(Control::open_folder);
  EXPECT_THAT(desktop_.taken, ElementsAre(results(flow)));
}

TEST_F(OpenedFiles, HelpOpensTheHelp) {
  medium_.bytes = test::card_with_photos(1);
  test::WindowFlow flow(medium_);
  const fs::path help = flow.folder() / "Resources" / "Help.pdf";
  test::write_file(help, "help");
  flow.click(Control::help_btn);
  EXPECT_THAT(desktop_.taken, ElementsAre(help));
}

TEST_F(OpenedFiles, ADoubleClickOpensThePhoto) {
  medium_.bytes = test::card_with_photos(1);
  test::WindowFlow flow(medium_);
  ASSERT_TRUE(search(flow));
  double_click_first(flow);
  EXPECT_THAT(desktop_.taken,
              ElementsAre(results(flow) / "General Recovery Results" / "JPG" / "GND00001.JPG"));
}

TEST_F(OpenedFiles, ADoubleClickOnAPhotoThatCannotBeShownOpensNothing) {
  // A header with nothing of a picture behind it.
  medium_.bytes.assign(64 * sector_size, 0x5A);
  const std::vector<std::uint8_t> header{0xFF, 0xD8, 0xFF, 0xE0, 0, 16, 'J', 'F', 'I', 'F', 0};
  std::copy(header.begin(), header.end(), medium_.bytes.begin() + 3 * sector_size);
  test::WindowFlow flow(medium_);
  ASSERT_TRUE(search(flow));
  const Gallery& found = flow.program().controller().gallery();
  ASSERT_TRUE(flow.wait_until(
      [&] { return found.size() == 1 && found.item(0)->path.filename() == "NoPreview.png"; }));
  double_click_first(flow);
  EXPECT_THAT(desktop_.taken, IsEmpty());
  EXPECT_THAT(flow.dialogs.alerts(), IsEmpty());
}

}  // namespace
}  // namespace norvo

#include "OpenedFiles_test.moc"
