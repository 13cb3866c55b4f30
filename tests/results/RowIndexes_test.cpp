// What is told of a row that a table does not have. This program brings its own diagnostic sink.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <vector>

#include "results/FoundFilesTable.h"
#include "sigdb/FileTypeCheckList.h"
#include "util/Diagnostics.h"

namespace norvo {
namespace {

std::vector<Text> messages;

}  // namespace

void Show_NSLog_Message(TextView message) {
  messages.emplace_back(message);
}

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

TEST(RowIndexes, BeyondTheFoundFilesAreToldAndGiveNothing) {
  messages.clear();
  FoundFilesTable table;
  table.createSignatureListTableRecord(u"MOV", 0, u"", {}, u"MOV");
  EXPECT_EQ(table.row(0).FileTypes, u"MOV");
  EXPECT_THAT(messages, IsEmpty());
  EXPECT_EQ(table.row(1), FoundFilesRow{});
  EXPECT_THAT(messages,
              ElementsAre(u"Invalid parameter not satisfying: pRowIndex >= 0 && pRowIndex < "
                          u"[nsSIGFileInfoDataObject count]"));
}

TEST(RowIndexes, BeyondTheCheckListAreToldAndChangeNothing) {
  messages.clear();
  FileTypeCheckList list;
  list.createExtensionListTableRecord(u"MOV", true, u"", u"");
  list.set_State(0, true);
  EXPECT_THAT(messages, IsEmpty());
  list.set_State(1, false);
  EXPECT_TRUE(list.all_selected());
  EXPECT_THAT(messages,
              ElementsAre(u"Invalid parameter not satisfying: pRowIndex >= 0 && pRowIndex < "
                          u"[nsCheckedListDataObject count]"));
}

}  // namespace
}  // namespace norvo
