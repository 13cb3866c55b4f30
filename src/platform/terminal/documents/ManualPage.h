// The manual page of norvo-recover.
#pragma once

#include <span>
#include <string>
#include <string_view>

#include "platform/terminal/CommandLine.h"

namespace norvo {

// `page`, a manual page in the "man" macros, with the lists in the place of their names: @OPTIONS@,
// @SEARCH_TYPES@, @EDITIONS@ and @EXIT_STATUSES@ on lines of their own, @VERSION@ and @RELEASE_DAY@
// anywhere. Any thread.
std::string manual_page(std::string_view page, std::span<const Option> options);

}  // namespace norvo
