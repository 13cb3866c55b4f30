// Items taken out of the gallery's list and moved in it.
#include <gtest/gtest.h>

#include <cstddef>
#include <limits>
#include <string>
#include <vector>

#include "results/Gallery.h"

namespace norvo::test {
namespace {

class GalleryItems : public testing::Test {
 protected:
  GalleryItems() {
    for (const char16_t name : {u'a', u'b', u'c', u'd', u'e', u'f'}) {
      const Text text(1, name);
      gallery_.addImageWithPath("/found/" + utf8_from_text(text), text, text);
    }
  }

  std::string items() const {
    std::string names;
    for (std::size_t i = 0; i < gallery_.size(); ++i) {
      names += utf8_from_text(gallery_.item(i)->image_Name);
    }
    return names;
  }

  Gallery gallery_;
};

TEST_F(GalleryItems, AreRemoved) {
  gallery_.removeItemsAtIndexes({4, 1});
  EXPECT_EQ(items(), "acdf");
  gallery_.removeItemsAtIndexes({});
  EXPECT_EQ(items(), "acdf");
  gallery_.removeItemsAtIndexes({0, 1, 2, 3});
  EXPECT_EQ(items(), "");
}

TEST_F(GalleryItems, AreRemovedOnceAndOnlyWhereTheyAre) {
  gallery_.removeItemsAtIndexes({2, 2, 6, 100});
  EXPECT_EQ(items(), "abdef");
}

TEST_F(GalleryItems, RemovalLeavesTheCount) {
  gallery_.removeItemsAtIndexes({0, 1});
  EXPECT_EQ(gallery_.Shown_Item_Count(), 6U);
}

struct Move {
  std::vector<std::size_t> indexes;
  std::size_t to;
  std::string expected;
};

class MovedItems : public GalleryItems, public testing::WithParamInterface<Move> {};

TEST_P(MovedItems, StandAsOneBlockBeforeTheItemAtTheDestination) {
  gallery_.moveItemsAtIndexes(GetParam().indexes, GetParam().to);
  EXPECT_EQ(items(), GetParam().expected);
}

INSTANTIATE_TEST_SUITE_P(Each, MovedItems,
                         testing::Values(Move{{1, 3}, 5, "acebdf"}, Move{{3, 1}, 5, "acebdf"},
                                         Move{{1, 3}, 6, "acefbd"}, Move{{1, 3}, 0, "bdacef"},
                                         Move{{1, 3}, 2, "abdcef"}, Move{{1, 3}, 3, "acbdef"},
                                         Move{{5}, 0, "fabcde"}, Move{{0}, 6, "bcdefa"},
                                         Move{{2}, 2, "abcdef"}, Move{{2}, 3, "abcdef"},
                                         Move{{0, 1, 2, 3, 4, 5}, 3, "abcdef"}));
INSTANTIATE_TEST_SUITE_P(
    OutOfTheList, MovedItems,
    testing::Values(Move{{}, 3, "abcdef"}, Move{{6, 9}, 0, "abcdef"}, Move{{1, 6}, 0, "bacdef"},
                    Move{{1, 1}, 6, "acdefb"}, Move{{1}, 100, "acdefb"},
                    Move{{7}, std::numeric_limits<std::size_t>::max(), "abcdef"}));

}  // namespace
}  // namespace norvo::test
