// The exit statuses of norvo-recover. The program ends with them, and the help and the manual page
// explain them with the meanings given here.
#pragma once

#include <array>
#include <string_view>

namespace norvo {

namespace exit_status {

inline constexpr int completed = 0;
inline constexpr int save_failed = 1;
inline constexpr int report_lost = 1;
inline constexpr int output_lost = 1;
inline constexpr int faulty_signatures = 1;  // of --check-signatures
inline constexpr int wrong_usage = 2;
inline constexpr int open_failed = 3;
inline constexpr int stopped = 130;

}  // namespace exit_status

struct ExitStatusMeaning {
  int status;
  std::string_view meaning;  // in words that follow "the status says that"
};

inline constexpr std::array<ExitStatusMeaning, 5> exit_statuses{{
    {exit_status::completed, "the search ran to its end"},
    {exit_status::save_failed,
     "results, report or output not saved; with --check-signatures: faults found"},
    {exit_status::wrong_usage, "wrong usage; standard error says what is wrong"},
    {exit_status::open_failed, "the device could not be opened"},
    {exit_status::stopped, "stopped by SIGINT or SIGTERM; what was recovered stays"},
}};

}  // namespace norvo
