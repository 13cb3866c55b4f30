// The gallery is cleared at the header after its 2,000th item; folders roll over at 50,000 files.
#include <gtest/gtest.h>

#include <chrono>
#include <filesystem>

#include "PhotoSearch.h"

namespace norvo::test {
namespace {

const std::vector<Recorded> relief{
    ScanOperation(operation::ShowClearingNotice{
        u"To maintain the speed of recovery, thumbnail preview window is cleared after every 2000 "
        u"thumbnails."}),
    Pause{std::chrono::milliseconds(4000)}, CountReset{}, ImagesEmptied{}};

// As many items as an earlier pass or search has reported.
void report_earlier(PhotoSearch& search, int items) {
  for (int i = 0; i < items; ++i) {
    search.recorder.gallery.addImageWithPath("/earlier", u"earlier", u"earlier");
  }
}

Report report_of(const PhotoSearch& search, const Text& name, const Text& uid) {
  return {search.pass_path(Pass::thorough) / "JPG" / utf8_from_text(name), name, uid};
}

TEST(PhotoScan, TheHeaderAfterTheTwoThousandthItemClearsTheGalleryBeforeThePreviousFilesReport) {
  PhotoSearch search("JJJ");
  report_earlier(search, 1999);
  std::uint64_t index = 0;
  search.recorder.on_entry = [&](const Recorded& entry) {
    if (std::holds_alternative<Pause>(entry)) index = search.state.for_index;
  };
  EXPECT_TRUE(search.run(Pass::thorough, table_of({jpeg()})));
  EXPECT_EQ(index, 3U);  // not yet at the header that brought the item's report
  std::vector<Recorded> wanted{report_of(search, u"THD00001.JPG", u"THD00001.JPG")};
  wanted.insert(wanted.end(), relief.begin(), relief.end());
  wanted.emplace_back(report_of(search, u"THD00002.JPG", u"THD00002.JPG"));
  wanted.emplace_back(report_of(search, u"THD00003.JPG", u"THD00003.JPG"));
  EXPECT_EQ(search.recorded_from(thorough_set_up_entries), wanted);
  EXPECT_EQ(search.recorder.gallery.Shown_Item_Count(), 2U);
  EXPECT_EQ(search.recorder.gallery.size(), 2U);
}

TEST(PhotoScan, FilesThatEndByTheirLimitInAFullGalleryAreCountedAndNotShown) {
  PhotoSearch search("JJzzJ");
  report_earlier(search, 1999);
  std::vector<std::pair<std::uint64_t, std::size_t>> counts;
  search.recorder.on_report = [&](const Report&) {
    counts.emplace_back(search.recorder.gallery.Shown_Item_Count(), search.recorder.gallery.size());
  };
  EXPECT_TRUE(search.run(Pass::thorough, table_of({jpeg(u"1024")})));
  EXPECT_EQ(counts, (std::vector<std::pair<std::uint64_t, std::size_t>>{
                        {2000, 2000}, {2001, 2000}, {1, 1}}));
  EXPECT_EQ(search.recorder.all<operation::ShowClearingNotice>().size(), 1U);
}

TEST(PhotoScan, AGeneralPassEmptiesTheGalleryAndLeavesItsCount) {
  PhotoSearch search("aa");
  report_earlier(search, 30);
  EXPECT_TRUE(search.run(Pass::general, table_of({jpeg()})));
  EXPECT_EQ(search.recorder.gallery.size(), 0U);
  EXPECT_EQ(search.recorder.gallery.Shown_Item_Count(), 30U);
  EXPECT_TRUE(search.recorder.all<CountReset>().empty());
}

TEST(PhotoScan, AThoroughPassGoesOnWithGalleryAndCount) {
  PhotoSearch search("aJ");
  report_earlier(search, 30);
  EXPECT_TRUE(search.run(Pass::thorough, table_of({jpeg()})));
  EXPECT_EQ(search.recorder.gallery.size(), 31U);
  EXPECT_EQ(search.recorder.gallery.Shown_Item_Count(), 31U);
}

TEST(PhotoScan, FilesThatOnlyEndDoNotClearAFullGallery) {
  PhotoSearch search("Jaa");
  report_earlier(search, 1999);
  EXPECT_TRUE(search.run(Pass::thorough, table_of({jpeg(u"512")})));
  EXPECT_EQ(search.recorder.gallery.Shown_Item_Count(), 2000U);
  EXPECT_TRUE(search.recorder.all<operation::ShowClearingNotice>().empty());
}

TEST(PhotoScan, ThePauseShowsTheIndexBehindTheHeader) {
  PhotoSearch search("aaJa", 1000);
  report_earlier(search, 2000);
  std::uint64_t index = 0;
  search.recorder.on_entry = [&](const Recorded& entry) {
    if (std::holds_alternative<Pause>(entry)) index = search.state.for_index;
  };
  EXPECT_TRUE(search.run(Pass::general, table_of({jpeg()})));
  EXPECT_EQ(index, 1003U);
}

// A drive on which every sector begins with a J header.
void make_all_headers(PhotoSearch& search, std::uint64_t sectors) {
  search.medium.made_sectors = sectors;
  search.medium.sector = [](std::uint64_t, std::span<std::byte> sector) {
    for (const std::size_t at : {0U, 2U}) sector[at] = std::byte{0xFF};
    sector[1] = std::byte{0xD8};
  };
  search.request.end_slider_val = decimal(sectors);
  // Recovered files are not kept: only their places matter.
  search.recorder.on_report = [](const Report& report) { std::filesystem::remove(report.path); };
}

TEST(PhotoScan, TheGalleryIsClearedAfterEveryTwoThousandItems) {
  PhotoSearch search("");
  make_all_headers(search, 4100);
  EXPECT_TRUE(search.run(Pass::general, table_of({jpeg(u"512")})));
  EXPECT_EQ(search.recorder.all<Report>().size(), 4100U);
  EXPECT_EQ(search.recorder.all<Pause>().size(), 2U);
  EXPECT_EQ(search.recorder.gallery.Shown_Item_Count(), 100U);
  EXPECT_EQ(search.recorder.gallery.size(), 100U);
  const std::vector<Recorded> all = search.recorder.recorded();
  // 2,000 reports, the relief, and the report of file 2,001.
  const auto at = static_cast<std::ptrdiff_t>(general_set_up_entries + 2000);
  EXPECT_TRUE(std::equal(relief.begin(), relief.end(), all.begin() + at));
}

TEST(PhotoScan, TheFileAfterFiftyThousandOfATypeBeginsTheNextFolder) {
  PhotoSearch search("");
  make_all_headers(search, 50001);
  EXPECT_TRUE(search.run(Pass::general, table_of({jpeg(u"512")})));
  const std::vector<Report> reports = search.recorder.all<Report>();
  ASSERT_EQ(reports.size(), 50001U);
  EXPECT_EQ(reports[0].path, search.pass_path(Pass::general) / "JPG/GND00001.JPG");
  EXPECT_EQ(reports[49999].path, search.pass_path(Pass::general) / "JPG/GND50000.JPG");
  EXPECT_EQ(reports[50000].path, search.pass_path(Pass::general) / "JPG_001/GND50001.JPG");
  EXPECT_TRUE(std::filesystem::is_directory(search.pass_path(Pass::general) / "JPG_001"));
}

}  // namespace
}  // namespace norvo::test
