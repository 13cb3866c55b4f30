// A table that ends inside a record: an exception at the first sector that reaches the record. The
// pass ends silently, as if it had come to its end, and leaves its open files to the next one.
#include <gtest/gtest.h>

#include "RawFileSearch.h"
#include "support/FileTree.h"

namespace norvo::test {
namespace {

using Paths = std::vector<std::string>;

TEST(RawFileScan, AnEntryThatIsNotThereEndsThePassAsRunToItsEndWithoutAWord) {
  for (const std::size_t entries : {1U, 2U, 3U, 4U, 6U}) {
    RawFileSearch search("zzaJ");
    EXPECT_TRUE(search.run(Pass::general, cut_off({jpeg()}, gif(), entries)));
    EXPECT_EQ(search.recorded_from(general_file_set_up_entries), std::vector<Recorded>{});
    EXPECT_EQ(search.found(), Found{});
    EXPECT_EQ(search.state.for_index, 3U);
    EXPECT_EQ(search.state.pFile_Disk, nullptr);
    EXPECT_EQ(search.state.outcome, SearchOutcome::completed);
  }
}

TEST(RawFileScan, ATableOfOneIncompleteRecordRaisesAtTheFirstSectorThatIsNotZero) {
  RawFileSearch zeros("zzz");
  EXPECT_TRUE(zeros.run(Pass::general, cut_off({}, gif(), 3)));
  EXPECT_EQ(zeros.state.for_index, 3U);
  RawFileSearch data("zaz");
  EXPECT_TRUE(data.run(Pass::general, cut_off({}, gif(), 3)));
  EXPECT_EQ(data.state.for_index, 2U);
}

TEST(RawFileScan, AnExceptionLeavesTheOpenFilesWithWhatTheyHaveAndUnreported) {
  for (const std::size_t block_sectors : {1U, 2U, 512U}) {
    RawFileSearch search("aJzzaa");
    search.request.start_slider_val = u"1";
    EXPECT_TRUE(search.run(Pass::general, cut_off({jpeg(), jfif()}, gif(), 4), block_sectors));
    EXPECT_EQ(search.found(),
              (Found{{"JPG/JPG00001.JPG", "1 z z"}, {"JFI/JFI00002.JFI", "1 z z"}}));
    EXPECT_TRUE(search.reported().empty());
    EXPECT_EQ(search.state.MultiHeader_Array.size(), 2U);
    EXPECT_EQ(search.state.for_index, 5U);
  }
}

TEST(RawFileScan, WhileHeadersAndZerosFollowEachOtherAnUnrelatedIncompleteRecordIsNotReached) {
  // The incomplete record's header is read at each header, and is there.
  RawFileSearch search("JzJz");
  EXPECT_TRUE(search.run(Pass::general, cut_off({jpeg()}, gif(), 3)));
  EXPECT_EQ(search.found(), (Found{{"JPG/JPG00001.JPG", "0 z 2"}, {"JPG/JPG00002.JPG", "2 z z"}}));
  EXPECT_EQ(search.reported(), (Paths{"JPG/JPG00001.JPG", "JPG/JPG00002.JPG"}));
}

TEST(RawFileScan, AnIncompleteRecordWithoutAHeaderRaisesAtTheFirstHeaderOnceItsFilesAreOpen) {
  for (const std::size_t entries : {1U, 2U}) {
    RawFileSearch search("JzJz");
    EXPECT_TRUE(search.run(Pass::general, cut_off({jpeg(), jfif()}, gif(), entries)));
    EXPECT_EQ(search.found(), (Found{{"JPG/JPG00001.JPG", "0"}, {"JFI/JFI00002.JFI", "0"}}));
    EXPECT_TRUE(search.reported().empty());
    EXPECT_EQ(search.state.for_index, 1U);
  }
}

TEST(RawFileScan, AnIncompleteRecordWhoseHeaderIsPartOfTheFoundOneStillGetsItsFile) {
  RawFileSearch search("Jz");
  EXPECT_TRUE(search.run(Pass::general, cut_off({jfif()}, jpeg(), 3)));
  EXPECT_EQ(search.found(), (Found{{"JFI/JFI00001.JFI", "0 z z"}, {"JPG/JPG00002.JPG", "0 z z"}}));
}

TEST(RawFileScan, AnIncompleteRecordWhoseHeaderIsLongerRaisesWithoutARuleAndGoesAlongWithOne) {
  RawFileSearch without("Jz");
  EXPECT_TRUE(without.run(Pass::general, cut_off({jpeg()}, jfif(), 3)));
  EXPECT_EQ(without.found(), (Found{{"JPG/JPG00001.JPG", "0"}}));
  RawFileSearch with("Jz");
  EXPECT_TRUE(with.run(Pass::general, cut_off({jpeg()}, jfif(), 4)));
  EXPECT_EQ(with.found(), (Found{{"JPG/JPG00001.JPG", "0 z z"}, {"JFI/JFI00002.JFI", "0 z z"}}));
}

TEST(RawFileScan, AnExceptionAtAHeaderComesAfterTheFilesBeforeItWereEnded) {
  // J goes well, as the search for companions of JPG begins behind GIF's record; G does not.
  RawFileSearch search("JzGz");
  const SignatureTable table = cut_off({gif(), jpeg()}, {u"GI2", no_limit, u"4749463839"}, 3);
  EXPECT_TRUE(search.run(Pass::general, table));
  EXPECT_EQ(search.found(), (Found{{"JPG/JPG00001.JPG", "0 z 2"}, {"GIF/GIF00002.GIF", "2"}}));
  EXPECT_EQ(search.reported(), (Paths{"JPG/JPG00001.JPG"}));
}

TEST(RawFileScan, AnExceptionLeavesTheProgressTimerRunning) {
  RawFileSearch search("Ja");
  EXPECT_TRUE(search.timer_survives(
      [&] { EXPECT_TRUE(search.run(Pass::general, cut_off({jpeg()}, gif(), 3))); }));
}

// A search whose General pass was ended by an exception in sector 1, with a file of sector 0 open.
class LeftOverFile : public testing::Test {
 protected:
  explicit LeftOverFile(const std::string& drawing = "Jaaa") : search_(drawing) {
    search_.add_rows(table_of({jpeg()}));
    EXPECT_TRUE(search_.run(Pass::general, cut_off({jpeg(u"1024")}, gif(), 4)));
    EXPECT_TRUE(search_.recorder.all<Report>().empty());
    search_.recorder.on_report = [this](const Report&) {
      indices_.push_back(search_.state.for_index);
    };
  }

  Report report(Pass pass, const Text& name) const {
    return {search_.pass_path(pass) / "JPG" / utf8_from_text(name), name, name};
  }

  RawFileSearch search_;
  std::vector<std::uint64_t> indices_;  // at each report
};

TEST_F(LeftOverFile, IsReportedOnceAtTheEndOfAThoroughPassThatFindsNothing) {
  EXPECT_TRUE(search_.run(Pass::thorough, table_of({png()})));
  EXPECT_EQ(search_.recorder.all<Report>(),
            (std::vector<Report>{report(Pass::general, u"JPG00001.JPG")}));
  EXPECT_EQ(search_.found(Pass::general), (Found{{"JPG/JPG00001.JPG", "0"}}));
  EXPECT_EQ(search_.counted(u"JPG"), u"1");
  EXPECT_EQ(indices_, (std::vector<std::uint64_t>{4}));
  EXPECT_TRUE(search_.state.MultiHeader_Array.empty());
}

TEST_F(LeftOverFile, IsReportedOnceAtTheFirstHeaderOfTheThoroughPassAndGetsNoSector) {
  EXPECT_TRUE(search_.run(Pass::thorough, table_of({jpeg(u"1024")})));
  EXPECT_EQ(search_.recorder.all<Report>(),
            (std::vector<Report>{report(Pass::general, u"JPG00001.JPG"),
                                 report(Pass::thorough, u"JPG00002.JPG")}));
  EXPECT_EQ(indices_, (std::vector<std::uint64_t>{1, 2}));
  EXPECT_EQ(search_.found(Pass::general), (Found{{"JPG/JPG00001.JPG", "0"}}));
  EXPECT_EQ(search_.found(Pass::thorough), (Found{{"JPG/JPG00002.JPG", "0 1"}}));
}

TEST_F(LeftOverFile, IsReportedByAThoroughPassThatIsStopped) {
  search_.state.stop_now = 1;
  EXPECT_FALSE(search_.run(Pass::thorough, table_of({png()})));
  EXPECT_EQ(search_.recorder.all<Report>(),
            (std::vector<Report>{report(Pass::general, u"JPG00001.JPG")}));
  EXPECT_EQ(search_.found(Pass::general), (Found{{"JPG/JPG00001.JPG", "0"}}));
}

TEST_F(LeftOverFile, IsReportedByAThoroughPassWithNothingToLookFor) {
  EXPECT_TRUE(search_.run(Pass::thorough, {}));
  EXPECT_EQ(search_.recorder.all<Report>(),
            (std::vector<Report>{report(Pass::general, u"JPG00001.JPG")}));
}

TEST_F(LeftOverFile, IsForgottenByTheNextGeneralPass) {
  EXPECT_TRUE(search_.run(Pass::general, table_of({png()})));
  EXPECT_TRUE(search_.recorder.all<Report>().empty());
  EXPECT_EQ(search_.counted(u"JPG"), u"0");
}

TEST_F(LeftOverFile, IsNotReportedByAThoroughPassThatRaisesAnExceptionToo) {
  EXPECT_TRUE(search_.run(Pass::thorough, cut_off({png()}, gif(), 4)));
  EXPECT_TRUE(search_.recorder.all<Report>().empty());
}

}  // namespace
}  // namespace norvo::test
