// How --report begins: the checks of where the report may lie, and its first lines.
#pragma once

#include <memory>
#include <span>
#include <variant>

#include "engine/ScanRequest.h"
#include "platform/terminal/CommandLine.h"
#include "platform/terminal/RecoveryReport.h"

namespace norvo {

// The begun report of `line`, a call with `arguments`; null when it asks for none. A report that
// exists already, that would lie on the searched drive, among the recovered files or where their
// folders are to be made, or that cannot be begun is a usage error. Main thread.
std::variant<std::unique_ptr<RecoveryReport>, UsageError> begin_report(
    const CommandLine& line, std::span<const char* const> arguments, const ScanRequest& request);

}  // namespace norvo
