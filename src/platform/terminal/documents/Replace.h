// Replacing in texts that become part of a document in another notation.
#pragma once

#include <string>
#include <string_view>

namespace norvo {

// `text` with each `from`, which is not empty, replaced by `to`. Any thread.
std::string replaced(std::string_view text, std::string_view from, std::string_view to);

}  // namespace norvo
