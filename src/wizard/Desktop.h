// What the wizard asks of the person's desktop. Main thread only.
#pragma once

#include <filesystem>

#include "util/Text.h"

namespace norvo {

class Desktop {
 public:
  virtual ~Desktop() = default;

  // Opens a file in the person's own viewer, or a folder in the file browser. False when nothing
  // could be started for it.
  virtual bool open_path(const std::filesystem::path& path) = 0;

  // Opens a web, mail or settings address. False as above.
  virtual bool open_address(TextView address) = 0;

  // Replaces the clipboard's content by a plain text.
  virtual void copy_text(TextView text) = 0;

  // Asks the program's event loop to end.
  virtual void terminate() = 0;
};

}  // namespace norvo
