// What a search for videos, raw files or audio tells a witness: where each file's bytes lie.
#include <gtest/gtest.h>

#include "RawFileSearch.h"

namespace norvo::test {
namespace {

void expect_runs(const std::string& drawing, const SignatureTable& table, const Runs& wanted) {
  for (const Alignment& where : alignments(true)) {
    SCOPED_TRACE(where.text());
    RawFileSearch search(drawing, where.start);
    search.add_rows(table);
    search.medium.blocks_fail_whole = where.blocks_fail_whole;
    search.read_with_helper = where.helper;
    RunCollector collector;
    search.witnesses = &collector;
    EXPECT_TRUE(search.run(Pass::general, table, where.block_sectors));
    EXPECT_EQ(runs_of(collector, where.start), wanted);
    search.expect_runs_give_the_files(collector);
  }
}

TEST(RawFileScanRuns, FilesOfOneHeaderEachHaveTheirOwnRuns) {
  expect_runs("aJaaaaa", table_of({jpeg(u"1536"), jfif()}),
              {{"JPG00001.JPG", "1-3"}, {"JFI00001.JFI", "1-6 6"}});
}

TEST(RawFileScanRuns, EveryOpenFileTakesTheNextHeadersSector) {
  expect_runs("JaaPa", table_of({jpeg(), jfif(), png()}),
              {{"JPG00001.JPG", "0-3"}, {"JFI00001.JFI", "0-3"}, {"PNG00001.PNG", "3-4 4"}});
}

TEST(RawFileScanRuns, UnreadableSectorsAreNamedAsRepetitionsInEveryFile) {
  expect_runs(
      "JaxaxaaJ", table_of({jpeg(), jfif()}),
      {{"JPG00001.JPG", "0-1 !1x2 3 !3x1 5-6 6"}, {"JFI00001.JFI", "0-1 !1x2 3 !3x1 5-6 6"}});
}

TEST(RawFileScanRuns, TheThoroughPassTellsItsOwnFiles) {
  RawFileSearch search("JaPaa", 77);
  const SignatureTable both = table_of({jpeg(), png()});
  search.add_rows(both);
  RunCollector collector;
  search.witnesses = &collector;
  EXPECT_TRUE(search.run(Pass::general, table_of({jpeg()}), 2));
  EXPECT_TRUE(search.run(Pass::thorough, table_of({png()}), 2));
  EXPECT_EQ(runs_of(collector, 77), (Runs{{"JPG00001.JPG", "0-4 4"}, {"PNG00001.PNG", "2-4 4"}}));
  search.expect_runs_give_the_files(collector);
}

TEST(RawFileScanRuns, StoppedFilesEndWhereTheSearchStopped) {
  RawFileSearch search("JaaJaaJ");
  const SignatureTable table = table_of({jpeg(), jfif()});
  search.add_rows(table);
  RunCollector collector;
  search.witnesses = &collector;
  search.recorder.on_report = [&](const Report&) { search.state.stop_now = 1; };
  EXPECT_FALSE(search.run(Pass::general, table, 2));
  EXPECT_EQ(runs_of(collector, 0), (Runs{{"JPG00001.JPG", "0-3"},
                                         {"JFI00001.JFI", "0-3"},
                                         {"JPG00002.JPG", "3"},
                                         {"JFI00002.JFI", "3"}}));
  search.expect_runs_give_the_files(collector);
}

}  // namespace
}  // namespace norvo::test
