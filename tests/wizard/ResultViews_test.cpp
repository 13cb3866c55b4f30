// The gallery and the file window as the person works with them.
#include "wizard/ResultViews.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "wizard/ScreenLists.h"
#include "wizard/WizardHarness.h"

namespace norvo::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class ResultViewsTest : public testing::Test {
 protected:
  ResultViewsTest() {
    for (const std::string name : {"a", "b", "c", "d", "e", "f"}) add("/out/" + name);
  }

  void add(const std::string& path) {
    bench_.gallery.addImageWithPath_2(path, text_from_utf8_lossy(path.substr(5)),
                                      text_from_utf8_lossy(path));
  }
  std::string items() const {
    std::string names;
    for (std::size_t i = 0; i < bench_.gallery.size(); ++i) {
      names += utf8_from_text(bench_.gallery.item(i)->image_Name);
    }
    return names;
  }
  void select(std::optional<std::size_t> row) {
    bench_.view.person_selects(Control::imageBrowser_2, row);
    views_.imageBrowserSelectionDidChange();
  }

  WizardHarness bench_;
  ResultViews views_{bench_.view,    bench_.state,   bench_.desktop,      bench_.boxes,
                     bench_.gallery, bench_.preview, "/app/NoPreview.png"};
};

TEST_F(ResultViewsTest, RemovedItemsLeaveTheListAndTheViewThatAskedIsReloaded) {
  views_.removeItemsAtIndexes(Control::imageBrowser, {1, 4});
  EXPECT_EQ(items(), "acdf");
  EXPECT_THAT(bench_.happened(), ElementsAre("reload imageBrowser"));
  views_.removeItemsAtIndexes(Control::imageBrowser_2, {0});
  EXPECT_EQ(items(), "cdf");
  EXPECT_THAT(bench_.happened(), ElementsAre("reload imageBrowser_2"));
}

TEST_F(ResultViewsTest, MovedItemsStandAsOneBlock) {
  views_.moveItemsAtIndexes(Control::imageBrowser, {1, 3}, 5);
  EXPECT_EQ(items(), "acebdf") << "items 1 and 3 stand at 3 and 4";
  EXPECT_THAT(bench_.happened(), ElementsAre("reload imageBrowser"));
}

TEST_F(ResultViewsTest, ADoubleClickOpensTheFile) {
  views_.cellWasDoubleClickedAtIndex(Control::imageBrowser, 1);
  views_.cellWasDoubleClickedAtIndex(Control::imageBrowser_2, 5);
  EXPECT_THAT(bench_.happened(), ElementsAre("open /out/b", "open /out/f"));
}

TEST_F(ResultViewsTest, AFileThatNothingOpensIsToldOf) {
  bench_.desktop.has_programs = false;
  add("/out/x\u202Ey");
  views_.cellWasDoubleClickedAtIndex(Control::imageBrowser_2, 6);
  EXPECT_THAT(
      bench_.happened(),
      ElementsAre("open /out/x\u202Ey", told("No program could be started to open this. Please "
                                             "open it yourself:\n\n/out/x\uFFFDy")));
}

TEST_F(ResultViewsTest, ADoubleClickOnAPlaceholderDoesNothingInTheGalleryOnly) {
  add("/app/NoPreview.png");
  views_.cellWasDoubleClickedAtIndex(Control::imageBrowser, 6);
  EXPECT_THAT(bench_.happened(), IsEmpty());
  views_.cellWasDoubleClickedAtIndex(Control::imageBrowser_2, 6);
  EXPECT_THAT(bench_.happened(), ElementsAre("open /app/NoPreview.png"));
}

TEST_F(ResultViewsTest, ADoubleClickOnAnItemThatIsGoneDoesNothing) {
  views_.cellWasDoubleClickedAtIndex(Control::imageBrowser, 6);
  EXPECT_THAT(bench_.happened(), IsEmpty());
}

TEST_F(ResultViewsTest, ASelectedItemIsPreviewedUnderItsName) {
  select(2);
  EXPECT_THAT(bench_.happened(),
              ElementsAre("clear preview", "text _QuickLook_View_Box \"c\"", "preview /out/c"));
  EXPECT_EQ(bench_.state.Prev_Index, 2U);
}

TEST_F(ResultViewsTest, SelectingTheSameItemAgainDoesNotPreviewItAgain) {
  select(2);
  bench_.log.clear();
  select(2);
  select(std::nullopt);
  select(2);
  EXPECT_THAT(bench_.happened(), IsEmpty());
  select(3);
  EXPECT_THAT(bench_.happened(),
              ElementsAre("clear preview", "text _QuickLook_View_Box \"d\"", "preview /out/d"));
}

TEST_F(ResultViewsTest, TheFirstItemIsPreviewedAtFirst) {
  select(0);
  EXPECT_THAT(bench_.happened(),
              ElementsAre("clear preview", "text _QuickLook_View_Box \"a\"", "preview /out/a"));
}

TEST_F(ResultViewsTest, AnItemThatIsGoneOnlyClearsThePreview) {
  select(6);
  EXPECT_THAT(bench_.happened(), ElementsAre("clear preview"));
}

TEST_F(ResultViewsTest, ANameCannotSteerTheTitle) {
  add("/out/x\u202Ey");
  select(6);
  EXPECT_EQ(bench_.view.text(Control::QuickLook_View_Box), u"x\uFFFDy");
}

TEST_F(ResultViewsTest, TheGalleryFollowsTheZoomSlider) {
  bench_.view.move(Control::zoom_slider, 0.25);
  views_.zoomSliderDidChange();
  EXPECT_THAT(bench_.happened(), ElementsAre("value imageBrowser 0.25"));
}

}  // namespace
}  // namespace norvo::test
