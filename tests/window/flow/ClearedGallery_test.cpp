// After 2000 items the list of results is emptied, and the person is told why.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QEvent>
#include <cstring>
#include <span>
#include <string>

#include "window/flow/WindowFlow.h"

namespace norvo {
namespace {

constexpr int most_items = 2000;

// Whether a widget was ever shown, be it as short as it may.
class ShownWatch : public QObject {
 public:
  explicit ShownWatch(QWidget& widget) { widget.installEventFilter(this); }
  bool shown() const { return shown_; }

 protected:
  bool eventFilter(QObject* /*watched*/, QEvent* event) override {
    shown_ = shown_ || event->type() == QEvent::Show;
    return false;
  }

 private:
  bool shown_ = false;
};

class ClearedGallery : public testing::Test {
 protected:
  // Every sector of the card begins a file, a few more than the list holds.
  void fill_card(const std::string& header) {
    medium_.made_sectors = most_items + 8;
    medium_.sector = [header](std::uint64_t, std::span<std::byte> sector) {
      std::memcpy(sector.data(), header.data(), header.size());
    };
  }

  static QWidget& sheet(test::WindowFlow& flow) {
    return *flow.program().window().findChild<QWidget*>("ClearPreview_Modeless");
  }

  test::FakeMedium medium_;
};

TEST_F(ClearedGallery, ANoticeStandsUntilThePhotosAreGoneAndTheWindowWorksAgain) {
  fill_card(std::string("\xFF\xD8\xFF\xE0\0\x10JFIF\0", 11));
  test::WindowFlow flow(medium_);
  flow.select_drive();
  flow.click(Control::next_btn);
  flow.choose_destination();
  flow.click(Control::Thro_Mode_Chk);
  const ShownWatch notice(sheet(flow));
  flow.dialogs.expect("SaveFile_Info", "OK_Btn");
  flow.click(Control::next_btn);
  ASSERT_TRUE(flow.wait_until([&] { return notice.shown(); }));
  EXPECT_TRUE(flow.is_visible(Control::ClearThumbnail_Label));
  EXPECT_NE(flow.text(Control::ClearThumbnail_Label).find(u"2000 thumbnails"), Text::npos);
  ASSERT_TRUE(flow.wait_until([&] { return !sheet(flow).isVisible(); }));
  EXPECT_LT(flow.program().controller().gallery().size(), std::size_t{most_items});
  ASSERT_TRUE(flow.wait_until(
      [&] { return flow.dialogs.all_answered() && flow.is_enabled(Control::back_btn); }));
  EXPECT_TRUE(flow.is_visible(Control::ClearThumbnail_Label)) << "until the person goes back";
  flow.click(Control::back_btn);
  EXPECT_EQ(flow.screen_counter(), 1) << "the window is live again";
  EXPECT_FALSE(flow.is_visible(Control::ClearThumbnail_Label));
}

TEST_F(ClearedGallery, FilesOfOtherSearchesHaveTheLineAlone) {
  fill_card("RIFF....AVI LIST");
  test::WindowFlow flow(medium_);
  flow.select_drive();
  flow.click(Control::rec_mode_Video);
  flow.click(Control::next_btn);
  flow.choose_destination(Control::browse_path_Sig);
  flow.click(Control::next_btn);
  flow.click(Control::Thro_Mode_Chk_SIG);
  const ShownWatch notice(sheet(flow));
  flow.dialogs.expect("SaveFile_Info", "OK_Btn");
  flow.click(Control::next_btn);
  ASSERT_TRUE(flow.wait_until(
      [&] { return flow.dialogs.all_answered() && flow.is_enabled(Control::back_btn); }));
  EXPECT_FALSE(notice.shown());
  EXPECT_TRUE(flow.is_visible(Control::ClearThumbnail_Label));
  EXPECT_NE(flow.text(Control::ClearThumbnail_Label).find(u"2000"), Text::npos);
  EXPECT_LT(flow.program().controller().gallery().size(), std::size_t{most_items});
}

}  // namespace
}  // namespace norvo
