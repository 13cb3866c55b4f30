#include "app/MyTableController.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <cerrno>
#include <chrono>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <memory>
#include <span>
#include <string>
#include <thread>
#include <utility>
#include <vector>

#include "support/FakeDevice.h"
#include "support/FileContent.h"
#include "support/Recorder.h"
#include "support/ReportList.h"
#include "support/TemporaryFolder.h"

namespace norvo {
namespace {

namespace fs = std::filesystem;
using test::ReportList;
using test::sector_of;
using testing::ElementsAre;
using testing::IsEmpty;

class AnsweringPanel final : public AlertPanel {
 public:
  explicit AnsweringPanel(AlertAnswer answer) : answer_(answer) {}
  AlertAnswer run(const Alert& alert) override {
    shown = alert;
    return answer_;
  }

  Alert shown;

 private:
  AlertAnswer answer_;
};

class SixByteMaker final : public ThumbnailMaker {
 public:
  std::vector<std::byte> png_thumbnail(std::span<const std::byte> /*encoded*/,
                                       std::uint32_t /*pixels*/) override {
    return std::vector<std::byte>(6);
  }
};

// A slow drive of zeros that notices when it is closed under a read. Its read at `stop_at` asks the
// search to stop, and reads beyond take longer than the search takes to end.
struct SlowDrive {
  static constexpr std::uint64_t stop_at = std::uint64_t{8} << 20U;

  std::function<void()> stop;
  std::atomic<int> reading{0};
  std::atomic<bool> closed_under_a_read{false};
};

class SlowDevice final : public Device {
 public:
  explicit SlowDevice(std::shared_ptr<SlowDrive> drive) : drive_(std::move(drive)) {}
  ~SlowDevice() override {
    if (drive_->reading != 0) drive_->closed_under_a_read = true;
  }

  std::int64_t read_block(std::uint64_t offset, std::span<std::byte> block) override {
    const std::shared_ptr<SlowDrive> drive = drive_;
    ++drive->reading;
    const std::uint64_t end = offset + block.size();
    const bool stops = offset <= SlowDrive::stop_at && SlowDrive::stop_at < end;
    if (stops) drive->stop();
    const int wait = stops ? 30 : offset > SlowDrive::stop_at ? 100 : 0;
    std::this_thread::sleep_for(std::chrono::milliseconds(wait));
    std::fill(block.begin(), block.end(), std::byte{});
    --drive->reading;
    return static_cast<std::int64_t>(block.size());
  }
  std::int64_t read_sector(std::uint64_t offset, std::span<std::byte> sector) override {
    return read_block(offset, sector);
  }
  bool can_position(std::uint64_t /*offset*/) override { return true; }
  void will_need(std::uint64_t /*offset*/, std::size_t /*length*/) override {}

 private:
  std::shared_ptr<SlowDrive> drive_;
};

class SlowOpener final : public DeviceOpener {
 public:
  OpenedDevice open(const fs::path& /*path*/) override {
    return {.device = std::make_unique<SlowDevice>(drive)};
  }

  const std::shared_ptr<SlowDrive> drive = std::make_shared<SlowDrive>();
};

class ControllerTest : public testing::Test {
 protected:
  ControllerTest() : opener_(medium_) {
    test::write_file(folder_.path() / "SPRExt2.dll",
                     "E : .jpg\nS : 1536\nHeader : FFD8FF\nP : 1\nK :\nD : JPEG image\n");
    test::write_file(folder_.path() / "SPRExt2Adv.dll",
                     "E : .png\nS : 5000\nHeader : 89504E47\nP : 1\nK :\nD : PNG image\n");
  }

  // A drive with two JPEG files and a PNG file.
  void fill_medium() {
    for (const std::string& sector :
         {test::zero_sectors(1), jpeg_1_, sector_of("", 'a'), jpeg_2_, sector_of("", 'b'),
          sector_of("", 'c'), sector_of("", 'd'), png_}) {
      medium_.bytes.insert(medium_.bytes.end(), sector.begin(), sector.end());
    }
  }

  ScanRequest request() const {
    ScanRequest request;
    request.device_path = "/dev/any";
    request.sectors_val = medium_.bytes.size() / sector_size;
    request.destination = folder_.path() / "destination";
    request.Rec_Folder_Name = u"Norvo Spruce Results";
    return request;
  }

  void search(MyTableController& controller, const ScanRequest& request) {
    controller.start_search(request);
    controller.wait_for_worker();
  }

  fs::path results(const fs::path& relative) const {
    return folder_.path() / "destination/Norvo Spruce Results/Photo Search" / relative;
  }

  const std::string jpeg_1_ = sector_of("\xFF\xD8\xFF", '1');
  const std::string jpeg_2_ = sector_of("\xFF\xD8\xFF", '2');
  const std::string png_ = sector_of("\x89PNG", '3');
  const fs::path general_ = "General Recovery Results";
  const fs::path thorough_ = "Omitted (recovered by Thorough Scan)";
  test::TemporaryFolder folder_;
  test::FakeMedium medium_;
  test::FakeOpener opener_;
  test::Recorder recorder_;
  ReportList list_;
};

TEST_F(ControllerTest, IsTheDefaultInstanceForAsLongAsItLives) {
  EXPECT_EQ(MyTableController::defaultInstance(), nullptr);
  EXPECT_EQ(App_DefaultInstance, nullptr);
  EXPECT_EQ(Main_App_wnd, nullptr);
  {
    MyTableController controller(u"Norvo Spruce", opener_, recorder_, list_);
    EXPECT_EQ(MyTableController::defaultInstance(), &controller);
    EXPECT_EQ(App_DefaultInstance, &controller);
    EXPECT_EQ(Main_App_wnd, &controller);
  }
  EXPECT_EQ(MyTableController::defaultInstance(), nullptr);
  EXPECT_EQ(App_DefaultInstance, nullptr);
  EXPECT_EQ(Main_App_wnd, nullptr);
}

TEST_F(ControllerTest, BeginsWithItsInitialState) {
  MyTableController controller(u"Norvo Spruce", opener_, recorder_, list_);
  EXPECT_EQ(controller.wizard.Prev_Index, 9223372036854775807U);
  EXPECT_EQ(controller.wizard.Recovery_MODE, 0);
  EXPECT_EQ(controller.wizard.screen_counter, 0);
  const ScanState& state = controller.state();
  EXPECT_EQ(state.stop_now, 0);
  EXPECT_EQ(state.stop_screen_already_show, 0);
  EXPECT_EQ(state.start_sector, 0U);
  EXPECT_EQ(state.end_sector, 0U);
  EXPECT_EQ(state.total_sector, 0U);
  EXPECT_EQ(state.for_index, 0U);
  EXPECT_EQ(state.GND_Image_number, 0U);
  EXPECT_EQ(state.THD_Image_number, 0U);
  EXPECT_EQ(state.pFile_Disk, nullptr);
  EXPECT_FALSE(state.pFile_op.is_open());
  EXPECT_EQ(controller.gallery().size(), 0U);
  EXPECT_EQ(controller.gallery().Shown_Item_Count(), 0U);
  EXPECT_TRUE(controller.tables().Ext_Array.empty());
  EXPECT_THAT(recorder_.recorded(), IsEmpty());
}

TEST_F(ControllerTest, TakesItsEditionFromTheBundleName) {
  const MyTableController controller(u"My Birch", opener_, recorder_, list_);
  EXPECT_EQ(controller.profile().App_Name, u"My Birch");
  EXPECT_EQ(controller.profile().Rec_Folder_Name, u"My Birch Results");
  EXPECT_EQ(controller.profile().signature_files.audio_dll, u"BIRAudio.dll");
}

TEST_F(ControllerTest, LoadsTheFilesOfItsEditionOnly) {
  MyTableController spruce(u"Norvo Spruce", opener_, recorder_, list_);
  spruce.load_signature_tables(folder_.path());
  ASSERT_EQ(spruce.tables().Ext_Array.size(), 7U);
  EXPECT_EQ(spruce.tables().Ext_Array[0], u"JPG");
  ASSERT_EQ(spruce.tables().Adv_Ext_Array.size(), 7U);
  EXPECT_EQ(spruce.tables().Adv_Ext_Array[0], u"PNG");
}

TEST_F(ControllerTest, LoadsNothingForAnotherEdition) {
  MyTableController alder(u"Norvo Alder", opener_, recorder_, list_);
  alder.load_signature_tables(folder_.path());
  EXPECT_TRUE(alder.tables().Ext_Array.empty());
  EXPECT_TRUE(alder.tables().Adv_Ext_Array.empty());
}

TEST_F(ControllerTest, ASearchSavesAndReportsTheFilesOfBothPasses) {
  fill_medium();
  MyTableController controller(u"Norvo Spruce", opener_, recorder_, list_);
  controller.load_signature_tables(folder_.path());
  search(controller, request());

  const fs::path first = results(general_ / "JPG/GND00001.JPG");
  const fs::path second = results(general_ / "JPG/GND00002.JPG");
  const fs::path third = results(thorough_ / "PNG/THD00001.PNG");
  EXPECT_THAT(list_.reports, ElementsAre(test::Report{first, u"GND00001.JPG", u"GND00001.JPG"},
                                         test::Report{second, u"GND00002.JPG", u"GND00002.JPG"},
                                         test::Report{third, u"THD00001.PNG", u"THD00001.PNG"}));
  EXPECT_THAT(list_.added, ElementsAre(true, true, true));
  EXPECT_EQ(test::read_file(first), jpeg_1_ + sector_of("", 'a') + jpeg_2_);
  EXPECT_EQ(test::read_file(second), jpeg_2_ + sector_of("", 'b') + sector_of("", 'c'));
  EXPECT_EQ(test::read_file(third), png_ + png_);
  EXPECT_EQ(controller.state().outcome, SearchOutcome::completed);
  EXPECT_EQ(medium_.opened, 2U);
}

TEST_F(ControllerTest, ASearchFillsTheGallery) {
  fill_medium();
  MyTableController controller(u"Norvo Spruce", opener_, recorder_, list_);
  controller.load_signature_tables(folder_.path());
  search(controller, request());
  EXPECT_EQ(controller.gallery().size(), 3U);
  EXPECT_EQ(controller.gallery().Shown_Item_Count(), 3U);
  ASSERT_TRUE(controller.gallery().item(2).has_value());
  EXPECT_EQ(controller.gallery().item(2)->image_UID, u"THD00001.PNG");
}

TEST_F(ControllerTest, APhotoInMemoryIsAnItemAndIsReportedWithoutAPath) {
  const std::vector<std::byte> photo(3);
  SixByteMaker maker;
  MyTableController controller(u"Norvo Spruce", opener_, recorder_, list_);
  controller.addImageWithData(photo, u"a.jpg", u"uid", maker);
  controller.addImageWithData({}, u"b.jpg", u"uid", maker);
  ASSERT_EQ(controller.gallery().size(), 1U);
  EXPECT_EQ(controller.gallery().item(0)->imageData->size(), 6U);
  EXPECT_THAT(list_.reports,
              ElementsAre(test::Report{"", u"a.jpg", u"uid"}, test::Report{"", u"b.jpg", u"uid"}));
  EXPECT_THAT(list_.added, ElementsAre(true, false));
}

TEST_F(ControllerTest, ASearchPostsTheFinalScreenOnceAndTheScreenEndsIt) {
  fill_medium();
  MyTableController controller(u"Norvo Spruce", opener_, recorder_, list_);
  controller.load_signature_tables(folder_.path());
  search(controller, request());
  EXPECT_EQ(recorder_.all<test::FinalScreenPosted>().size(), 1U);
  EXPECT_EQ(controller.state().stop_screen_already_show, 0);
  EXPECT_THAT(recorder_.all<test::SaveInfoRun>(), IsEmpty());

  controller.Final_or_Stop_Screen();
  EXPECT_EQ(recorder_.all<test::SaveInfoRun>().size(), 1U);
  EXPECT_EQ(controller.state().stop_screen_already_show, 1);
  EXPECT_EQ(controller.state().stop_now, 0);
}

TEST_F(ControllerTest, ASearchWithoutTheThoroughPassLeavesItOut) {
  fill_medium();
  MyTableController controller(u"Norvo Spruce", opener_, recorder_, list_);
  controller.load_signature_tables(folder_.path());
  ScanRequest general_only = request();
  general_only.thorough = false;
  search(controller, general_only);
  EXPECT_EQ(list_.reports.size(), 2U);
  EXPECT_FALSE(fs::exists(results(thorough_)));
}

TEST_F(ControllerTest, TheNextSearchGoesOnWithIdentifiersAndCount) {
  fill_medium();
  MyTableController controller(u"Norvo Spruce", opener_, recorder_, list_);
  controller.load_signature_tables(folder_.path());
  search(controller, request());
  search(controller, request());
  ASSERT_EQ(list_.reports.size(), 6U);
  EXPECT_EQ(list_.reports[3].name, u"GND00001.JPG");
  EXPECT_EQ(list_.reports[3].uid, u"GND00003.JPG");
  EXPECT_EQ(list_.reports[5].name, u"THD00001.PNG");
  EXPECT_EQ(list_.reports[5].uid, u"THD00002.PNG");
  EXPECT_EQ(controller.gallery().size(), 3U);
  EXPECT_EQ(controller.gallery().Shown_Item_Count(), 6U);
}

TEST_F(ControllerTest, AStopEndsTheSearchWithoutAThoroughPass) {
  MyTableController controller(u"Norvo Spruce", opener_, recorder_, list_);
  controller.load_signature_tables(folder_.path());
  medium_.made_sectors = 1U << 20U;
  medium_.sector = [&](std::uint64_t number, std::span<std::byte>) {
    if (number == 5000) controller.state().stop_now = 1;
  };
  ScanRequest whole = request();
  whole.sectors_val = medium_.made_sectors;
  search(controller, whole);
  EXPECT_EQ(controller.state().outcome, SearchOutcome::stopped);
  EXPECT_EQ(medium_.opened, 1U);
  EXPECT_FALSE(fs::exists(results(thorough_)));
  EXPECT_LT(controller.state().for_index, medium_.made_sectors);
  EXPECT_GE(recorder_.all<test::FinalScreenPosted>().size(), 1U);
}

TEST_F(ControllerTest, TheWorkersLastActIsToTellOfItsEnd) {
  fill_medium();
  MyTableController controller(u"Norvo Spruce", opener_, recorder_, list_);
  controller.load_signature_tables(folder_.path());
  std::size_t final_screens = 0;
  std::thread::id teller;
  controller.start_search(request(), nullptr, [&] {
    final_screens = recorder_.all<test::FinalScreenPosted>().size();
    teller = std::this_thread::get_id();
  });
  controller.wait_for_worker();
  EXPECT_EQ(final_screens, 1U);
  EXPECT_NE(teller, std::this_thread::get_id());
}

TEST_F(ControllerTest, AStopClosesTheDeviceOnlyWhenNothingReadsItAnyMore) {
  SlowOpener opener;
  MyTableController controller(u"Norvo Spruce", opener, recorder_, list_);
  controller.load_signature_tables(folder_.path());
  opener.drive->stop = [&controller] { controller.state().stop_now = 1; };
  ScanRequest whole = request();
  whole.sectors_val = 1U << 20U;
  search(controller, whole);
  EXPECT_EQ(controller.state().outcome, SearchOutcome::stopped);
  EXPECT_FALSE(opener.drive->closed_under_a_read);
}

TEST_F(ControllerTest, TheStopButtonAsksFirst) {
  MyTableController controller(u"Norvo Spruce", opener_, recorder_, list_);
  AnsweringPanel no(AlertAnswer::other_button);
  EXPECT_FALSE(controller.stop_usb_disk(no));
  EXPECT_EQ(controller.state().stop_now, 0);
  EXPECT_EQ(no.shown.message, u"\nDo you want to stop searching?");
  EXPECT_EQ(no.shown.default_button, u"Yes");
  EXPECT_EQ(no.shown.other_button, u"No");

  AnsweringPanel yes(AlertAnswer::default_button);
  EXPECT_TRUE(controller.stop_usb_disk(yes));
  EXPECT_EQ(controller.state().stop_now, 1);
}

TEST_F(ControllerTest, ADeviceThatDoesNotOpenIsReported) {
  medium_.open_error = EACCES;
  MyTableController controller(u"Norvo Spruce", opener_, recorder_, list_);
  controller.load_signature_tables(folder_.path());
  search(controller, request());
  EXPECT_THAT(recorder_.all<test::PermissionAlert>(), ElementsAre(test::PermissionAlert{EACCES}));
  EXPECT_THAT(recorder_.all<test::FinalScreenPosted>(), IsEmpty());
  EXPECT_EQ(controller.state().outcome, SearchOutcome::open_failed);
  EXPECT_FALSE(fs::exists(results("")));
}

// Without the stop this would go on for years.
TEST_F(ControllerTest, ARunningSearchEndsWithTheController) {
  std::atomic<std::uint64_t> read{0};
  medium_.made_sectors = std::uint64_t{1} << 50U;
  medium_.sector = [&](std::uint64_t, std::span<std::byte>) { ++read; };
  ScanRequest whole = request();
  whole.sectors_val = medium_.made_sectors;
  {
    MyTableController controller(u"Norvo Spruce", opener_, recorder_, list_);
    controller.load_signature_tables(folder_.path());
    controller.start_search(whole);
    while (read == 0) std::this_thread::sleep_for(std::chrono::milliseconds(1));
  }
  const std::uint64_t at_the_end = read;
  std::this_thread::sleep_for(std::chrono::milliseconds(20));
  EXPECT_EQ(read, at_the_end);
}

}  // namespace
}  // namespace norvo
