// Searches for videos, raw files and audio in the real window.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QAbstractItemView>

#include "support/FileContent.h"
#include "window/flow/WindowFlow.h"

namespace norvo {
namespace {

namespace fs = std::filesystem;
using testing::ElementsAre;

struct Flow {
  TextView bundle_name;
  Control radio;
  std::string header;  // the first bytes of a file that the search finds
  std::string extension;
  std::string folder;
};

class FileFlow : public testing::TestWithParam<Flow> {
 protected:
  FileFlow() {
    for (const std::string& sector :
         {test::zero_sectors(2), test::sector_of(GetParam().header, 'a'), test::sector_of("", 'b'),
          test::sector_of("", 'c')}) {
      medium_.bytes.insert(medium_.bytes.end(), sector.begin(), sector.end());
    }
  }

  static void go_to_check_list(test::WindowFlow& flow) {
    flow.select_drive();
    flow.click(GetParam().radio);
    flow.click(Control::next_btn);
    flow.choose_destination(Control::browse_path_Sig);
    flow.click(Control::next_btn);
  }

  static QString cell(test::WindowFlow& flow, Control table, int row, int column) {
    return qobject_cast<QAbstractItemView*>(&flow.widget(table))
        ->model()
        ->index(row, column)
        .data()
        .toString();
  }

  test::FakeMedium medium_;
};

TEST_P(FileFlow, AllTypesAreTickedAndTheFileIsFoundCountedAndNamed) {
  test::WindowFlow flow(medium_, GetParam().bundle_name);
  go_to_check_list(flow);
  EXPECT_EQ(flow.screen_counter(), 2);
  EXPECT_TRUE(flow.is_visible(Control::idCheckTableView));
  EXPECT_TRUE(flow.program().window().is_on(Control::select_unselect_Chk));
  ASSERT_TRUE(flow.search_to_the_end());
  EXPECT_EQ(flow.screen_counter(), 3);
  EXPECT_TRUE(flow.is_visible(Control::open_folder_Sig));
  const Gallery& gallery = flow.program().controller().gallery();
  ASSERT_GE(gallery.size(), 1U);
  const fs::path folder = flow.destination() /
                          (utf8_from_text(GetParam().bundle_name) + " Results") /
                          GetParam().folder / "General Recovery Results" / GetParam().extension;
  EXPECT_FALSE(fs::is_empty(folder));
  EXPECT_TRUE(
      fs::exists(folder.parent_path().parent_path() / "Omitted (recovered by Thorough Scan)"));
  auto* const table = qobject_cast<QAbstractItemView*>(&flow.widget(Control::idSigTableView));
  int counted = 0;
  for (int row = 0; row < table->model()->rowCount(); ++row) {
    if (cell(flow, Control::idSigTableView, row, 0).toStdString() != GetParam().extension) continue;
    counted = cell(flow, Control::idSigTableView, row, 1).toInt();
  }
  EXPECT_EQ(counted, 1);
}

TEST_P(FileFlow, WithoutTheThoroughScanThereIsOnePass) {
  test::WindowFlow flow(medium_, GetParam().bundle_name);
  go_to_check_list(flow);
  flow.click(Control::Thro_Mode_Chk_SIG);
  ASSERT_TRUE(flow.search_to_the_end());
  const fs::path results = flow.destination() /
                           (utf8_from_text(GetParam().bundle_name) + " Results") /
                           GetParam().folder;
  EXPECT_TRUE(fs::exists(results / "General Recovery Results"));
  EXPECT_FALSE(fs::exists(results / "Omitted (recovered by Thorough Scan)"));
}

TEST_P(FileFlow, WithoutATypeTheSearchDoesNotStart) {
  test::WindowFlow flow(medium_, GetParam().bundle_name);
  go_to_check_list(flow);
  flow.click(Control::select_unselect_Chk);
  flow.dialogs.expect("alert", "OK");
  flow.click(Control::next_btn);
  EXPECT_THAT(flow.dialogs.alerts(), ElementsAre(u"\nPlease select atleast one extension type."));
  EXPECT_EQ(flow.screen_counter(), 2);
  EXPECT_TRUE(flow.is_visible(Control::idCheckTableView));
}

TEST_P(FileFlow, BackGoesStepByStepToTheDrives) {
  test::WindowFlow flow(medium_, GetParam().bundle_name);
  go_to_check_list(flow);
  ASSERT_TRUE(flow.search_to_the_end());
  flow.click(Control::back_btn);
  EXPECT_EQ(flow.screen_counter(), 2);
  EXPECT_TRUE(flow.is_visible(Control::idCheckTableView));
  EXPECT_FALSE(flow.is_visible(Control::imageBrowser_2));
  flow.click(Control::back_btn);
  EXPECT_EQ(flow.screen_counter(), 1);
  EXPECT_TRUE(flow.is_visible(Control::path_Sig));
  EXPECT_FALSE(flow.is_visible(Control::idCheckTableView));
  flow.click(Control::back_btn);
  EXPECT_EQ(flow.screen_counter(), 0);
  EXPECT_TRUE(flow.is_visible(Control::idTableView));
}

INSTANTIATE_TEST_SUITE_P(
    SearchTypes, FileFlow,
    testing::Values(Flow{u"Norvo Spruce", Control::rec_mode_Video, "RIFF....AVI LIST", "AVI",
                         "Video Search"},
                    Flow{u"Norvo Cedar", Control::rec_mode_RawFile,
                         std::string("II*\0\x10\0\0\0CR\x02\0", 12), "CR2", "File Search"},
                    Flow{u"Norvo Birch", Control::rec_mode_Audio, std::string("fLaC\0\0\0\x22", 8),
                         "FLAC", "Audio File Search"}),
    [](const testing::TestParamInfo<Flow>& flow) { return flow.param.extension; });

}  // namespace
}  // namespace norvo
