// Shows a recovered file beside the list. Main thread.
#pragma once

#include <filesystem>

namespace norvo {

class PreviewPane {
 public:
  virtual ~PreviewPane() = default;

  // Removes the picture and any movie; what is being prepared is never shown.
  virtual void clear() = 0;

  // Prepares and shows the preview of the file; may return before it is there.
  virtual void CreateFile_QuickLook_Preview(const std::filesystem::path& path) = 0;
};

}  // namespace norvo
