// What the notice after a search says.
#include "wizard/SavedNotice.h"

#include <gtest/gtest.h>

namespace norvo::test {
namespace {

SearchSettings entire_disk(std::int32_t mode) {
  SearchSettings settings;
  settings.Recovery_MODE = mode;
  settings.disk_identifier = u"sdb1";
  return settings;
}

TEST(SavedNotice, NamesTheFolderOfWhatWasSaved) {
  const SavedNotice notice = saved_notice(entire_disk(0), true, "/out/strange\xFF/\u202EPhoto");
  EXPECT_EQ(notice.text, u"What was found and saved lies in this folder:");
  EXPECT_EQ(notice.place, u"/out/strange\uFFFD/\uFFFDPhoto");
  EXPECT_TRUE(notice.advice.starts_with(u"Open some of the files"));
}

TEST(SavedNotice, NamesTheSearchThatHasSavedNothing) {
  const SavedNotice notice = saved_notice(entire_disk(0), false, "/out");
  EXPECT_EQ(notice.text, u"This search has saved no complete file:");
  EXPECT_EQ(notice.place, u"Photo Search, entire disk sdb1");
  EXPECT_EQ(notice.advice,
            u"Nothing was found, or it could not be saved. A search with other settings may find "
            u"more, and we are glad to help.");
  EXPECT_EQ(saved_notice(entire_disk(3), false, "/out").place,
            u"Audio File Search, entire disk sdb1");
}

TEST(SavedNotice, NamesTheSectorsOfARange) {
  SearchSettings settings = entire_disk(1);
  settings.entire_disk = false;
  settings.sector_range = true;
  settings.disk_identifier = u"/home/anna/c\u202Eard.img";
  settings.start_slider_val = u"100";
  settings.end_slider_val = u"3000000000";
  EXPECT_EQ(saved_notice(settings, false, "/out").place,
            u"Video Search, sectors 100 to 3000000000 of /home/anna/c\uFFFDard.img");
}

}  // namespace
}  // namespace norvo::test
