// Which preview a file gets, in which order, and what comes too late.
#include "results/FilePreview.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

namespace norvo::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class RecordedSurface final : public PreviewSurface {
 public:
  bool shown = true;
  std::vector<std::string> log;

  bool is_shown() const override { return shown; }
  void open_movie(const std::filesystem::path& path) override {
    log.push_back("open " + path.native());
  }
  void closemovie_Win() override { log.emplace_back("closemovie_Win"); }
  void show_view(View view) override {
    log.emplace_back(view == View::movie ? "movie view" : "image view");
  }
  void make_thumbnail(const std::filesystem::path& path) override {
    log.push_back("make " + path.native());
  }
  void show_thumbnail() override { log.emplace_back("thumbnail"); }
  void show_icon(const std::filesystem::path& file_Name) override {
    log.push_back("icon of " + file_Name.native());
  }
  void clear_image() override { log.emplace_back("clear image"); }
};

class FilePreviewTest : public testing::Test {
 protected:
  std::vector<std::string> happened() { return std::exchange(surface_.log, {}); }

  RecordedSurface surface_;
  FilePreview preview_{surface_, [this] {
                         // A stop that came meanwhile is looked for when the flag is down.
                         EXPECT_FALSE(preview_.prev_modless_open());
                         surface_.log.emplace_back("shown");
                       }};
};

TEST_F(FilePreviewTest, AMovieIsShownInTheMovieView) {
  preview_.CreateFile_QuickLook_Preview("/out/a.mp4");
  EXPECT_TRUE(preview_.prev_modless_open());
  EXPECT_THAT(happened(), ElementsAre("open /out/a.mp4"));
  preview_.movie_opened();
  EXPECT_THAT(happened(), ElementsAre("movie view", "shown"));
}

TEST_F(FilePreviewTest, WhatIsNoMovieIsShownAsItsPicture) {
  preview_.CreateFile_QuickLook_Preview("/out/a.jpg");
  preview_.movie_failed();
  EXPECT_TRUE(preview_.prev_modless_open());
  EXPECT_THAT(happened(), ElementsAre("open /out/a.jpg", "image view", "make /out/a.jpg"));
  preview_.thumbnail_made(true);
  EXPECT_THAT(happened(), ElementsAre("thumbnail", "shown"));
}

TEST_F(FilePreviewTest, WhatHasNoPictureIsShownAsTheIconOfItsType) {
  preview_.CreateFile_QuickLook_Preview("/out/a.xyz");
  preview_.movie_failed();
  happened();
  preview_.thumbnail_made(false);
  EXPECT_THAT(happened(), ElementsAre("icon of a.xyz", "shown"));
}

TEST_F(FilePreviewTest, ClearingEmptiesTheImageViewAndThenTheMovieView) {
  preview_.CreateFile_QuickLook_Preview("/out/a.mp4");
  happened();
  preview_.clear();
  EXPECT_THAT(happened(), ElementsAre("clear image", "closemovie_Win"));
  EXPECT_FALSE(preview_.prev_modless_open());
}

TEST_F(FilePreviewTest, AMovieThatFailsWhilePlayingGivesWayToItsPicture) {
  preview_.CreateFile_QuickLook_Preview("/out/a.mp4");
  preview_.movie_opened();
  happened();
  preview_.movie_failed();
  preview_.thumbnail_made(true);
  EXPECT_THAT(happened(), ElementsAre("image view", "make /out/a.mp4", "thumbnail"))
      << "the preview was there already";
}

TEST_F(FilePreviewTest, WhatComesAfterTheScreenWasLeftIsNotShown) {
  using Answer = void (*)(FilePreview&);
  for (const Answer answer :
       {Answer([](FilePreview& preview) { preview.movie_opened(); }),
        Answer([](FilePreview& preview) { preview.movie_failed(); }),
        Answer([](FilePreview& preview) { preview.thumbnail_made(true); }),
        Answer([](FilePreview& preview) { preview.thumbnail_made(false); })}) {
    surface_.shown = true;
    preview_.CreateFile_QuickLook_Preview("/out/a");
    surface_.shown = false;
    happened();
    answer(preview_);
    EXPECT_THAT(happened(), ElementsAre("clear image", "closemovie_Win"));
    surface_.shown = true;
    answer(preview_);
    EXPECT_THAT(happened(), IsEmpty()) << "it was cleared for good";
  }
}

TEST_F(FilePreviewTest, WithoutAPreviewNoAnswerIsShown) {
  preview_.movie_opened();
  preview_.movie_failed();
  preview_.thumbnail_made(true);
  EXPECT_THAT(happened(), IsEmpty());
}

TEST_F(FilePreviewTest, AnEmptyPathShowsNothing) {
  preview_.CreateFile_QuickLook_Preview("");
  EXPECT_FALSE(preview_.prev_modless_open());
  EXPECT_THAT(happened(), ElementsAre("shown"));
}

}  // namespace
}  // namespace norvo::test
