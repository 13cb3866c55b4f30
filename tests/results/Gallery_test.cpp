// The list of shown items and the count that decides when it is cleared.
#include "results/Gallery.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <functional>
#include <string>
#include <thread>
#include <vector>

namespace norvo::test {
namespace {

ItemReport add(Gallery& gallery, const std::filesystem::path& path = "/found/a.jpg") {
  return gallery.addImageWithPath(path, u"a.jpg", u"GND00001.jpg");
}

void add_many(Gallery& gallery, int items) {
  for (int i = 0; i < items; ++i) add(gallery);
}

TEST(Gallery, IsEmptyAtFirst) {
  const Gallery gallery;
  EXPECT_EQ(gallery.size(), 0U);
  EXPECT_EQ(gallery.Shown_Item_Count(), 0U);
  EXPECT_EQ(gallery.item(0), std::nullopt);
}

TEST(Gallery, KeepsPathNameAndIdentifierOfAnItemAtItsEnd) {
  Gallery gallery;
  add(gallery);
  EXPECT_TRUE(
      gallery.addImageWithPath("/found/b.png", u"GND00002.png", u"GND00012.png").item_added);
  ASSERT_EQ(gallery.size(), 2U);
  EXPECT_EQ(gallery.item(1), (MyImageObject{.path = "/found/b.png",
                                            .image_Name = u"GND00002.png",
                                            .image_UID = u"GND00012.png",
                                            .File_Start_Sector = 0,
                                            .File_End_Sector = 0}));
  EXPECT_EQ(gallery.item(2), std::nullopt);
}

TEST(Gallery, ShowsItsTwoThousandthItemAndOnlyCountsFurtherOnes) {
  Gallery gallery;
  add_many(gallery, 1999);
  EXPECT_TRUE(add(gallery).item_added);
  EXPECT_EQ(gallery.size(), 2000U);
  EXPECT_EQ(gallery.Shown_Item_Count(), 2000U);
  for (const std::uint64_t count : {2001U, 2002U, 2003U}) {
    EXPECT_FALSE(add(gallery).item_added);
    EXPECT_EQ(gallery.size(), 2000U);
    EXPECT_EQ(gallery.Shown_Item_Count(), count);
  }
}

TEST(Gallery, IgnoresItemsWhenTheCountIsFullThoughTheListIsNot) {
  Gallery gallery;
  add_many(gallery, 2000);
  gallery.empty_images();
  EXPECT_FALSE(add(gallery).item_added);
  EXPECT_EQ(gallery.size(), 0U);
  EXPECT_EQ(gallery.Shown_Item_Count(), 2000U);
}

std::vector<std::string> names_of(const GalleryChanges& changes) {
  std::vector<std::string> names;
  for (const MyImageObject& item : changes.items) names.push_back(utf8_from_text(item.image_Name));
  return names;
}

class GalleryReader : public testing::Test {
 protected:
  GalleryReader() {
    add_named(u"a");
    add_named(u"b");
    edits = gallery.changes(0, 0).edits;
  }

  void add_named(TextView name) { gallery.addImageWithPath("/found/a.jpg", name, name); }

  Gallery gallery;
  std::uint64_t edits = 0;
};

TEST_F(GalleryReader, IsGivenOnlyWhatWasAdded) {
  EXPECT_EQ(names_of(gallery.changes(0, 0)), (std::vector<std::string>{"a", "b"}));
  EXPECT_TRUE(gallery.changes(edits, 2).items.empty());
  add_named(u"c");
  const GalleryChanges changes = gallery.changes(edits, 2);
  EXPECT_TRUE(changes.only_added);
  EXPECT_EQ(changes.edits, edits);
  EXPECT_EQ(names_of(changes), std::vector<std::string>{"c"});
}

TEST_F(GalleryReader, IsGivenTheWholeListAfterAnyOtherChange) {
  const std::vector<std::function<void()>> acts{
      [&] { gallery.show_placeholder(u"a"); }, [&] { gallery.moveItemsAtIndexes({0}, 2); },
      [&] { gallery.removeItemsAtIndexes({0}); }, [&] { gallery.empty_images(); }};
  for (const auto& act : acts) {
    act();
    add_named(u"new");
    const GalleryChanges changes = gallery.changes(edits, 2);
    EXPECT_FALSE(changes.only_added);
    EXPECT_EQ(changes.items.size(), gallery.size());
    edits = changes.edits;
  }
}

TEST_F(GalleryReader, IsToldThatNothingItKnowsIsLeft) {
  const std::vector<std::function<void()>> acts{
      [&] { gallery.empty_images(); },
      [&] {
        gallery.removeItemsAtIndexes({0, 1, 2, 3, 4, 5, 6});
      }};
  for (const auto& act : acts) {
    EXPECT_FALSE(gallery.changes(edits, 2).emptied);
    act();
    add_named(u"a");
    add_named(u"b");
    const GalleryChanges changes = gallery.changes(edits, 2);
    EXPECT_TRUE(changes.emptied) << "though the same names came again";
    EXPECT_EQ(names_of(changes), (std::vector<std::string>{"a", "b"}));
    edits = changes.edits;
  }
  gallery.removeItemsAtIndexes({0});
  gallery.moveItemsAtIndexes({0}, 1);
  gallery.show_placeholder(u"b");
  EXPECT_FALSE(gallery.changes(edits, 2).emptied) << "an item is left";
}

TEST(Gallery, AFullListCountsEvenAnEmptyPath) {
  Gallery gallery;
  add_many(gallery, 2000);
  add(gallery, "");
  EXPECT_EQ(gallery.Shown_Item_Count(), 2001U);
}

TEST(Gallery, AnEmptyPathAddsNothing) {
  Gallery gallery;
  for (const char* path : {"", " ", "\n\t ", "\u00A0"}) {
    EXPECT_FALSE(add(gallery, path).item_added);
  }
  EXPECT_EQ(gallery.size(), 0U);
  EXPECT_EQ(gallery.Shown_Item_Count(), 0U);
}

TEST(Gallery, EmptyingLeavesTheCountAndResettingLeavesTheItems) {
  Gallery gallery;
  add_many(gallery, 5);
  gallery.empty_images();
  EXPECT_EQ(gallery.size(), 0U);
  EXPECT_EQ(gallery.Shown_Item_Count(), 5U);
  add_many(gallery, 2);
  gallery.reset_Shown_Item_Count();
  EXPECT_EQ(gallery.size(), 2U);
  EXPECT_EQ(gallery.Shown_Item_Count(), 0U);
}

TEST(Gallery, ScrollsToTheLastItemAtEverySixthCount) {
  Gallery gallery;
  std::string scrolled;
  for (int i = 0; i < 13; ++i) scrolled += add(gallery).scroll_to_last ? 'S' : '.';
  EXPECT_EQ(scrolled, ".....S.....S.");
}

TEST(Gallery, DoesNotScrollForItemsThatAreOnlyCounted) {
  Gallery gallery;
  add_many(gallery, 2000);
  for (int i = 0; i < 6; ++i) EXPECT_FALSE(add(gallery).scroll_to_last);
  EXPECT_EQ(gallery.Shown_Item_Count(), 2006U);
}

TEST(Gallery, CountsOnFromZeroAfterAClearing) {
  Gallery gallery;
  add_many(gallery, 2004);
  gallery.reset_Shown_Item_Count();
  gallery.empty_images();
  add_many(gallery, 5);
  EXPECT_TRUE(add(gallery).scroll_to_last);
  EXPECT_EQ(gallery.Shown_Item_Count(), 6U);
  EXPECT_EQ(gallery.size(), 6U);
}

TEST(Gallery, MayBeReadWhileItemsAreAdded) {
  Gallery gallery;
  std::thread worker([&] { add_many(gallery, 2100); });
  for (std::size_t size = 0; size < Gallery::item_limit; size = gallery.size()) {
    if (size > 0) {
      EXPECT_TRUE(gallery.item(size - 1).has_value());
    }
    EXPECT_GE(gallery.Shown_Item_Count(), size);
  }
  worker.join();
  EXPECT_EQ(gallery.Shown_Item_Count(), 2100U);
}

ItemReport add_file(Gallery& gallery, const std::filesystem::path& path = "/found/a.MOV") {
  return gallery.addImageWithPath_2(path, u"a.MOV", u"a.MOV");
}

TEST(FileWindow, KeepsPathNameAndIdentifierOfAFileAtItsEnd) {
  Gallery gallery;
  add_file(gallery);
  EXPECT_TRUE(gallery.addImageWithPath_2("/found/b.AVI", u"b.AVI", u"other").item_added);
  ASSERT_EQ(gallery.size(), 2U);
  EXPECT_EQ(gallery.item(1), (MyImageObject{.path = "/found/b.AVI",
                                            .image = {.file_type = u"AVI", .points = 16},
                                            .image_Name = u"b.AVI",
                                            .image_UID = u"other",
                                            .File_Start_Sector = 0,
                                            .File_End_Sector = 0}));
}

TEST(FileWindow, ScrollsToTheLastItemAtEveryFourthCount) {
  Gallery gallery;
  std::string scrolled;
  for (int i = 0; i < 13; ++i) scrolled += add_file(gallery).scroll_to_last ? 'S' : '.';
  EXPECT_EQ(scrolled, "...S...S...S.");
}

TEST(FileWindow, ScrollsByTheCountAndNotByTheItems) {
  Gallery gallery;
  for (int i = 0; i < 3; ++i) add_file(gallery);
  gallery.empty_images();
  EXPECT_TRUE(add_file(gallery).scroll_to_last);
  EXPECT_EQ(gallery.size(), 1U);
}

TEST(FileWindow, ShowsItsTwoThousandthFileAndOnlyCountsFurtherOnes) {
  Gallery gallery;
  for (int i = 0; i < 1999; ++i) add_file(gallery);
  const ItemReport last = add_file(gallery);
  EXPECT_TRUE(last.item_added);
  EXPECT_TRUE(last.scroll_to_last);
  for (const std::uint64_t count : {2001U, 2002U, 2003U, 2004U}) {
    const ItemReport report = add_file(gallery);
    EXPECT_FALSE(report.item_added);
    EXPECT_FALSE(report.scroll_to_last);
    EXPECT_EQ(gallery.size(), 2000U);
    EXPECT_EQ(gallery.Shown_Item_Count(), count);
  }
}

TEST(FileWindow, IgnoresFilesWhenTheCountIsFullThoughTheListIsNot) {
  Gallery gallery;
  for (int i = 0; i < 2000; ++i) add_file(gallery);
  gallery.empty_images();
  EXPECT_FALSE(add_file(gallery).item_added);
  EXPECT_EQ(gallery.size(), 0U);
  EXPECT_EQ(gallery.Shown_Item_Count(), 2000U);
}

TEST(FileWindow, TakesFilesWhenTheListIsNotFullAndTheCountWasReset) {
  Gallery gallery;
  for (int i = 0; i < 2000; ++i) add_file(gallery);
  gallery.reset_Shown_Item_Count();
  EXPECT_FALSE(add_file(gallery).item_added);  // the list is full still
  EXPECT_EQ(gallery.Shown_Item_Count(), 1U);
  gallery.empty_images();
  EXPECT_TRUE(add_file(gallery).item_added);
  EXPECT_EQ(gallery.Shown_Item_Count(), 2U);
}

TEST(FileWindow, APathOfBlanksChangesNothing) {
  Gallery gallery;
  for (const char* path : {"", " ", "   ", "\n\t ", "\u00A0"}) {
    EXPECT_FALSE(add_file(gallery, path).item_added);
  }
  EXPECT_EQ(gallery.size(), 0U);
  EXPECT_EQ(gallery.Shown_Item_Count(), 0U);
}

TEST(FileWindow, AFullListCountsEvenAPathOfBlanks) {
  Gallery gallery;
  for (int i = 0; i < 2000; ++i) add_file(gallery);
  add_file(gallery, "  ");
  EXPECT_EQ(gallery.Shown_Item_Count(), 2001U);
}

TEST(Gallery, AnItemKeepsItsPathWithoutWhiteSpaceAtTheEnds) {
  Gallery gallery;
  gallery.addImageWithPath(" /d/GND00001.JPG\n", u"GND00001.JPG", u"GND00001.JPG");
  ASSERT_EQ(gallery.size(), 1U);
  EXPECT_EQ(gallery.item(0)->path, "/d/GND00001.JPG");
}

}  // namespace
}  // namespace norvo::test
