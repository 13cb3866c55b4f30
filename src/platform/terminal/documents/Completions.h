// What the shells are told so that they complete the options of norvo-recover and their values.
//
// Words that can stand as a value are proposed where there are only a few; elsewhere block devices
// and files, folders, files or nothing, as the option takes them (OptionValues.h). Any thread.
#pragma once

#include <span>
#include <string>

#include "platform/terminal/CommandLine.h"

namespace norvo {

// A file for bash 4 and newer, to be sourced before the first completion.
std::string bash_completion(std::span<const Option> options);

// A function file for zsh's completion system, to be named _norvo-recover in its search path.
std::string zsh_completion(std::span<const Option> options);

// A file for a folder of fish's completions.
std::string fish_completion(std::span<const Option> options);

}  // namespace norvo
