// What an empty list of results says.
#include <ostream>

#include "platform/qt/ResultView.h"
#include "window/WindowTest.h"

namespace norvo {
namespace {

using namespace Qt::StringLiterals;

struct List {
  Control browser;
  QString none_yet;
  QString none_found;
  QString taken_out;
};

void PrintTo(const List& list, std::ostream* out) {
  *out << control_name(list.browser);
}

class EmptyListsTest : public WindowTest, public testing::WithParamInterface<List> {
 protected:
  // What a screen reader says of the list, as what stands in it.
  QString note() { return find<ResultView>(GetParam().browser).accessibleDescription(); }

  void begin_search() { show({GetParam().browser, Control::stop_scan}); }
  void end_search() { window->set_hidden(Control::stop_scan, true); }

  void reload() {
    window->reload(GetParam().browser);
    const QAbstractItemModel& model = *find<ResultView>(GetParam().browser).model();
    ASSERT_TRUE(wait_until([&] { return model.rowCount() == static_cast<int>(gallery.size()); }));
  }

  void find_one() {
    gallery.addImageWithPath_2("/nowhere/1.jpg", u"1", u"1");
    reload();
  }

  void take_out() {
    gallery.empty_images();
    reload();
  }
};

TEST_P(EmptyListsTest, says_during_a_search_that_nothing_was_found_yet) {
  begin_search();
  EXPECT_TRUE(note().startsWith(GetParam().none_yet)) << note().toStdString();
}

TEST_P(EmptyListsTest, says_after_a_search_that_nothing_was_found_and_what_to_try) {
  begin_search();
  end_search();
  EXPECT_TRUE(note().startsWith(GetParam().none_found)) << note().toStdString();
  EXPECT_TRUE(note().contains(u"thorough search"_s));
  EXPECT_TRUE(note().contains(u"entire disk"_s));
  EXPECT_TRUE(note().contains(u"another type of search"_s));
}

TEST_P(EmptyListsTest, tells_of_the_keys_while_the_list_shows_something) {
  begin_search();
  find_one();
  EXPECT_TRUE(note().startsWith(u"Return opens"_s)) << note().toStdString();
  end_search();
  EXPECT_TRUE(note().startsWith(u"Return opens"_s)) << note().toStdString();
}

TEST_P(EmptyListsTest, says_of_what_was_taken_out_that_it_is_still_saved) {
  begin_search();
  find_one();
  take_out();
  EXPECT_TRUE(note().startsWith(GetParam().taken_out)) << "as when the list is cleared";
  end_search();
  EXPECT_TRUE(note().startsWith(GetParam().taken_out)) << "as when the person removes all";
}

TEST_P(EmptyListsTest, says_of_each_search_what_became_of_it) {
  begin_search();
  find_one();
  end_search();
  take_out();
  begin_search();
  EXPECT_TRUE(note().startsWith(GetParam().none_yet)) << note().toStdString();
  end_search();
  EXPECT_TRUE(note().startsWith(GetParam().none_found)) << note().toStdString();
}

INSTANTIATE_TEST_SUITE_P(
    Each, EmptyListsTest,
    testing::Values(List{Control::imageBrowser, u"No photos yet"_s, u"No photos were found"_s,
                         u"No photos in the list"_s},
                    List{Control::imageBrowser_2, u"No files yet"_s, u"No files were found"_s,
                         u"No files in the list"_s}));

}  // namespace
}  // namespace norvo
