// What a report says about the search as a whole.
#pragma once

#include <cstdint>
#include <filesystem>
#include <span>
#include <string>

namespace norvo {

struct ReportFacts {
  std::string program_version;
  std::string compiler;
  std::string os_sysname;
  std::string os_release;
  std::string os_version;
  std::string host;
  std::string arch;
  std::string command_line;
  std::string uid;
  std::string username;
  std::string start_time;  // ISO 8601, UTC
  std::string image_filename;
  std::uint64_t sectors = 0;
};

// The facts of a search that starts now, of the first `sectors` sectors of `device`, by a call with
// `arguments` after the program's name. What the system does not tell stays empty.
ReportFacts gather_report_facts(std::span<const char* const> arguments,
                                const std::filesystem::path& device, std::uint64_t sectors);

// The call as a shell takes it: words with other characters than the plainest are quoted.
std::string shell_command(std::span<const char* const> arguments);

}  // namespace norvo
