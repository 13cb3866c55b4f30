// A table that ends inside a record: an exception at the first sector that reaches the record.
#include <gtest/gtest.h>

#include "PhotoSearch.h"
#include "support/FileTree.h"

namespace norvo::test {
namespace {

// `rows` and the first `entries` entries of one more record.
SignatureTable cut_off(const std::vector<TypeRow>& rows, std::size_t entries) {
  SignatureTable table = table_of(rows);
  const SignatureTable broken = table_of({gif()});
  table.insert(table.end(), broken.begin(), broken.begin() + static_cast<std::ptrdiff_t>(entries));
  return table;
}

TEST(PhotoScan, AnEntryThatIsNotThereIsShownInAMessageBoxAndEndsThePassAsRunToItsEnd) {
  for (const std::size_t entries : {1U, 2U, 3U, 6U}) {
    PhotoSearch search("zzaJ");
    EXPECT_TRUE(search.run(Pass::general, cut_off({jpeg()}, entries)));
    const std::vector<Recorded> after = search.recorded_from(general_set_up_entries);
    ASSERT_EQ(after.size(), 1U) << entries;
    const auto* box = std::get_if<MessageBox>(&after[0]);
    ASSERT_NE(box, nullptr);
    EXPECT_FALSE(box->text.empty());
    EXPECT_NE(box->text, unable_saving_Msg);
    EXPECT_EQ(search.found(), Found{});
    EXPECT_EQ(search.state.outcome, SearchOutcome::completed);
  }
}

TEST(PhotoScan, ATableOfOneIncompleteRecordRaisesAtTheFirstSectorThatIsNotZero) {
  PhotoSearch zeros("zzz");
  EXPECT_TRUE(zeros.run(Pass::general, cut_off({}, 3)));
  EXPECT_TRUE(zeros.recorder.all<MessageBox>().empty());
  PhotoSearch data("zza");
  EXPECT_TRUE(data.run(Pass::general, cut_off({}, 3)));
  EXPECT_EQ(data.recorder.all<MessageBox>().size(), 1U);
}

TEST(PhotoScan, ARecordThatMatchesFirstKeepsTheSearchFromTheBrokenOne) {
  PhotoSearch search("JzJz");
  EXPECT_TRUE(search.run(Pass::general, cut_off({jpeg()}, 4)));
  EXPECT_TRUE(search.recorder.all<MessageBox>().empty());
  EXPECT_EQ(search.found(), (Found{{"JPG/GND00001.JPG", "0 z 2"}, {"JPG/GND00002.JPG", "2 z z"}}));
}

TEST(PhotoScan, AnExceptionLeavesTheFileOpenWithWhatWasWritten) {
  for (const std::size_t block_sectors : {1U, 2U, 512U}) {
    PhotoSearch search("aJzaa");
    search.request.start_slider_val = u"1";
    EXPECT_TRUE(search.run(Pass::general, cut_off({jpeg()}, 4), block_sectors));
    EXPECT_EQ(search.found(), (Found{{"JPG/GND00001.JPG", "1 z"}}));
    EXPECT_TRUE(search.state.pFile_op.is_open());
    EXPECT_NE(search.state.pFile_Disk, nullptr);
    EXPECT_TRUE(search.reported().empty());
  }
}

TEST(PhotoScan, TheSectorThatRaisedWasReadAlready) {
  PhotoSearch search("aJzaa");
  search.request.start_slider_val = u"1";
  EXPECT_TRUE(search.run(Pass::general, cut_off({jpeg()}, 4)));
  EXPECT_EQ(search.state.for_index, 4U);
}

TEST(PhotoScan, TheNextPassClosesAFileLeftOpenWhenItStartsOneOfItsOwn) {
  PhotoSearch search("Ja");
  EXPECT_TRUE(search.run(Pass::general, cut_off({jpeg()}, 4)));
  EXPECT_TRUE(search.run(Pass::thorough, table_of({jpeg()})));
  EXPECT_EQ(search.found(Pass::general), (Found{{"JPG/GND00001.JPG", "0"}}));
  EXPECT_EQ(search.found(Pass::thorough), (Found{{"JPG/THD00001.JPG", "0 1 1"}}));
  EXPECT_EQ(search.reported(Pass::thorough), (std::vector<std::string>{"JPG/THD00001.JPG"}));
}

TEST(PhotoScan, ANextPassThatFindsNothingEndsAFileLeftOpenWithItsOwnLastSector) {
  PhotoSearch search("Jaa");
  EXPECT_TRUE(search.run(Pass::general, cut_off({jpeg()}, 4)));
  EXPECT_TRUE(search.run(Pass::thorough, table_of({png()})));
  EXPECT_EQ(search.found(Pass::general), (Found{{"JPG/GND00001.JPG", "0 2"}}));
  // That pass knows neither its path nor its name, and a report without a path counts nothing.
  EXPECT_EQ(search.recorder.all<Report>(), (std::vector<Report>{{"", u"", u""}}));
  EXPECT_EQ(search.recorder.gallery.Shown_Item_Count(), 0U);
  EXPECT_FALSE(search.state.pFile_op.is_open());
}

TEST(PhotoScan, ANextPassThatReadsNothingEndsAFileLeftOpenWithZeros) {
  PhotoSearch search("Jaa");
  EXPECT_TRUE(search.run(Pass::general, cut_off({jpeg()}, 4)));
  EXPECT_TRUE(search.run(Pass::thorough, {}));
  EXPECT_EQ(search.found(Pass::general), (Found{{"JPG/GND00001.JPG", "0 z"}}));
}

TEST(PhotoScan, TheNextPassOpensTheDeviceAnewAfterAnException) {
  PhotoSearch search("Ja");
  EXPECT_TRUE(search.run(Pass::general, cut_off({jpeg()}, 4)));
  EXPECT_TRUE(search.run(Pass::thorough, table_of({png()})));
  EXPECT_EQ(search.medium.opened, 2U);
  EXPECT_EQ(search.state.pFile_Disk, nullptr);
}

TEST(PhotoScan, AStopEndsAFileLeftOpenByAnEarlierPassWithoutASector) {
  PhotoSearch search("Jaa");
  EXPECT_TRUE(search.run(Pass::general, cut_off({jpeg()}, 4)));
  search.state.stop_now = 1;
  EXPECT_FALSE(search.run(Pass::thorough, table_of({png()})));
  EXPECT_EQ(search.found(Pass::general), (Found{{"JPG/GND00001.JPG", "0"}}));
  EXPECT_EQ(search.recorder.all<Report>(), (std::vector<Report>{{"", u"", u""}}));
}

}  // namespace
}  // namespace norvo::test
