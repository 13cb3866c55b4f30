// The file window is cleared at the header after its 2,000th item; while it is full, counts stand
// still and so do names.
#include <gtest/gtest.h>

#include <chrono>
#include <filesystem>

#include "RawFileSearch.h"

namespace norvo::test {
namespace {

using Paths = std::vector<std::string>;

const std::vector<Recorded> relief{
    ScanOperation(operation::ShowClearingNotice{
        u"To maintain the speed of recovery, file window is cleared after every 2000 files."}),
    Pause{std::chrono::milliseconds(4000)}, CountReset{}, ImagesEmptied{}};

// As many files as an earlier pass or search has reported, of a type without a row.
void report_earlier(RawFileSearch& search, int files) {
  for (int i = 0; i < files; ++i) {
    search.recorder.gallery.addImageWithPath_2("/earlier", u"earlier", u"earlier");
  }
}

std::size_t notices(const RawFileSearch& search) {
  return search.recorder.all<operation::ShowClearingNotice>().size();
}

TEST(RawFileScan, TheHeaderAfterTheTwoThousandthFileClearsTheFileWindowOnceItsOwnFilesAreOpen) {
  RawFileSearch search("JJJ");
  const SignatureTable table = table_of({jpeg()});
  search.add_rows(table);
  report_earlier(search, 1999);
  bool opened = false;
  search.recorder.on_entry = [&](const Recorded& entry) {
    if (entry != relief[0]) return;
    opened = std::filesystem::exists(search.pass_path(Pass::thorough) / "JPG/JPG00002.JPG");
    EXPECT_EQ(search.state.MultiHeader_Array.size(), 1U);
  };
  EXPECT_TRUE(search.run(Pass::thorough, table));
  EXPECT_TRUE(opened);
  const auto report_of = [&](const Text& name) {
    return Report{search.pass_path(Pass::thorough) / "JPG" / utf8_from_text(name), name, name};
  };
  std::vector<Recorded> wanted{report_of(u"JPG00001.JPG")};
  wanted.insert(wanted.end(), relief.begin(), relief.end());
  wanted.emplace_back(report_of(u"JPG00002.JPG"));
  wanted.emplace_back(report_of(u"JPG00003.JPG"));
  EXPECT_EQ(search.recorded_from(thorough_file_set_up_entries), wanted);
  EXPECT_EQ(search.recorder.gallery.Shown_Item_Count(), 2U);
  EXPECT_EQ(search.recorder.gallery.size(), 2U);
  EXPECT_EQ(search.counted(u"JPG"), u"3");
}

TEST(RawFileScan, OneFileLessDoesNotClear) {
  RawFileSearch search("JJ");
  report_earlier(search, 1998);
  EXPECT_TRUE(search.run(Pass::thorough, table_of({jpeg()})));
  EXPECT_EQ(notices(search), 0U);
  EXPECT_EQ(search.recorder.gallery.Shown_Item_Count(), 2000U);
}

TEST(RawFileScan, FilesThatOnlyEndDoNotClearAFullFileWindow) {
  RawFileSearch search("Jaaa");
  report_earlier(search, 1999);
  EXPECT_TRUE(search.run(Pass::thorough, table_of({jpeg(u"1024"), jfif(u"1024")})));
  EXPECT_EQ(notices(search), 0U);
  EXPECT_EQ(search.recorder.gallery.size(), 2000U);
  EXPECT_EQ(search.recorder.gallery.Shown_Item_Count(), 2001U);
}

TEST(RawFileScan, AFileReportedToAFullWindowIsReplacedByTheNextOfItsType) {
  RawFileSearch search("JaaJaa");
  const SignatureTable table = table_of({jpeg(u"1024"), jfif(u"1024")});
  search.add_rows(table);
  report_earlier(search, 1999);
  EXPECT_TRUE(search.run(Pass::thorough, table));
  EXPECT_EQ(search.reported(Pass::thorough), (Paths{"JPG/JPG00001.JPG", "JFI/JFI00001.JFI",
                                                    "JPG/JPG00002.JPG", "JFI/JFI00001.JFI"}));
  EXPECT_EQ(search.found(Pass::thorough), (Found{{"JPG/JPG00001.JPG", "0 1"},
                                                 {"JPG/JPG00002.JPG", "3 4"},
                                                 {"JFI/JFI00001.JFI", "3 4"}}));
  EXPECT_EQ(search.counted(u"JPG"), u"2");
  EXPECT_EQ(search.counted(u"JFI"), u"1");
  EXPECT_EQ(notices(search), 1U);
}

TEST(RawFileScan, ACountThatIsFullIgnoresFilesThoughTheWindowIsNot) {
  // The General pass empties the window and leaves the count.
  RawFileSearch search("Jaa");
  const SignatureTable table = table_of({jpeg(u"1024"), jfif(u"1024"), {u"EXT", u"1024", u"FF"}});
  search.add_rows(table);
  report_earlier(search, 1999);
  EXPECT_TRUE(search.run(Pass::general, table));
  EXPECT_EQ(search.recorder.gallery.size(), 1U);
  EXPECT_EQ(search.recorder.gallery.Shown_Item_Count(), 2000U);
  EXPECT_EQ(search.counted(u"JPG"), u"1");
  EXPECT_EQ(search.counted(u"JFI"), u"0");
  EXPECT_EQ(search.counted(u"EXT"), u"0");
}

TEST(RawFileScan, TheFirstHeaderOfAPassClearsWhatEarlierOnesLeftFull) {
  RawFileSearch search("Ja");
  const SignatureTable table = table_of({jpeg()});
  search.add_rows(table);
  report_earlier(search, 2000);
  EXPECT_TRUE(search.run(Pass::general, table));
  EXPECT_EQ(notices(search), 1U);
  EXPECT_EQ(search.recorder.gallery.Shown_Item_Count(), 1U);
  EXPECT_EQ(search.counted(u"JPG"), u"1");
}

TEST(RawFileScan, AGeneralPassEmptiesTheFileWindowAndLeavesItsCount) {
  RawFileSearch search("aa");
  report_earlier(search, 30);
  EXPECT_TRUE(search.run(Pass::general, table_of({jpeg()})));
  EXPECT_EQ(search.recorder.gallery.size(), 0U);
  EXPECT_EQ(search.recorder.gallery.Shown_Item_Count(), 30U);
  EXPECT_TRUE(search.recorder.all<CountReset>().empty());
}

TEST(RawFileScan, AThoroughPassGoesOnWithFileWindowAndCount) {
  RawFileSearch search("aJ");
  report_earlier(search, 30);
  EXPECT_TRUE(search.run(Pass::thorough, table_of({jpeg()})));
  EXPECT_EQ(search.recorder.gallery.size(), 31U);
  EXPECT_EQ(search.recorder.gallery.Shown_Item_Count(), 31U);
}

TEST(RawFileScan, InALongSearchTheLastOfThreeTypesLosesAFileAtTheClearing) {
  // 668 headers of three types. At the 668th the 667th files end: the second of them fills the
  // window, the third is not counted, and its successor takes its name.
  RawFileSearch search(std::string(668, 'J'));
  const SignatureTable table = table_of({jpeg(), jfif(), {u"EXT", no_limit, u"FFD8FFE05A"}});
  search.add_rows(table);
  EXPECT_TRUE(search.run(Pass::general, table));
  const Found files = search.found();
  EXPECT_EQ(files.size(), 668U + 668U + 667U);
  EXPECT_EQ(files.at("JPG/JPG00667.JPG"), "666 667");
  EXPECT_EQ(files.at("JPG/JPG00668.JPG"), "667 667");
  EXPECT_EQ(files.at("JFI/JFI00668.JFI"), "667 667");
  EXPECT_EQ(files.at("EXT/EXT00666.EXT"), "665 666");
  EXPECT_EQ(files.at("EXT/EXT00667.EXT"), "667 667");
  EXPECT_EQ(search.counted(u"JPG"), u"668");
  EXPECT_EQ(search.counted(u"EXT"), u"667");
  EXPECT_EQ(notices(search), 1U);
  EXPECT_EQ(search.recorder.gallery.size(), 3U);
  EXPECT_EQ(search.recorder.gallery.Shown_Item_Count(), 3U);
}

}  // namespace
}  // namespace norvo::test
