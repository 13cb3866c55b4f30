// What goes to the programs that read foreign files for the window.
#pragma once

#include <filesystem>

#include "util/UniqueFd.h"

namespace norvo {

// Opens a file for reading; nothing when it is no regular file, or one behind a symbolic link. Does
// not wait, whatever `path` names. Any thread.
UniqueFd open_regular_file(const std::filesystem::path& path);

// In the calling thread: a program that has ended is noticed by its answer that does not come, and
// not by a signal that would end this one.
void block_broken_pipe_signal();

}  // namespace norvo
