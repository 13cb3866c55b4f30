// The program's lists as the window's tables and result views read them. Main thread.
#pragma once

#include "app/MyTableController.h"
#include "platform/qt/MainWindow.h"
#include "storage/DriveList.h"

namespace norvo {

// What is referred to outlives the window. A photo that cannot be shown becomes the gallery's
// placeholder.
WindowContent window_content(MyTableController& controller, const DriveList& drives,
                             ThumbnailSource& thumbnails);

}  // namespace norvo
