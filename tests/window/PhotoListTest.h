// The gallery in a window, with photos of the test's own.
#pragma once

#include "platform/qt/ResultView.h"
#include "window/WindowTest.h"

namespace norvo {

class PhotoListTest : public WindowTest {
 protected:
  ResultView& view() { return find<ResultView>(Control::imageBrowser); }
  QModelIndex item(int row) { return view().model()->index(row, 0); }

  // Adds so many and waits until they are the rows.
  void show_photos(std::size_t count) {
    show({Control::imageBrowser});
    add_photos(count);
    ASSERT_TRUE(wait_until([&] { return view().model()->rowCount() == static_cast<int>(count); }));
  }
};

}  // namespace norvo
