// Opens what lies outside the window. Where nothing can be started for it, a box says what the
// person can open by hand. Main thread.
#pragma once

#include <filesystem>

#include "util/Text.h"
#include "wizard/Desktop.h"
#include "wizard/MessageBoxes.h"

namespace norvo {

// A file in its viewer, or a folder in the file browser.
void open_or_tell(Desktop& desktop, MessageBoxes& boxes, const std::filesystem::path& path);

// A web page.
void open_page_or_tell(Desktop& desktop, MessageBoxes& boxes, TextView address);

// A new mail by its complete "mailto:" address; told is the mailbox alone.
void write_mail_or_tell(Desktop& desktop, MessageBoxes& boxes, TextView mailto, TextView mailbox);

}  // namespace norvo
