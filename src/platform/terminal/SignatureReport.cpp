#include "platform/terminal/SignatureReport.h"

#include <algorithm>
#include <optional>
#include <string>
#include <system_error>
#include <vector>

#include "platform/terminal/ExitStatus.h"
#include "sigdb/SignatureCheck.h"
#include "util/Files.h"

namespace norvo {
namespace fs = std::filesystem;
namespace {

constexpr std::uintmax_t largest_file = 64U << 20U;

std::vector<fs::path> signature_files(const fs::path& folder) {
  std::vector<fs::path> files;
  std::error_code error;
  for (const fs::directory_entry& entry : fs::directory_iterator(folder, error)) {
    if (entry.path().extension() == ".dll") files.push_back(entry.path());
  }
  std::sort(files.begin(), files.end());
  return files;
}

}  // namespace

int report_signature_faults(const fs::path& folder, std::ostream& out, std::ostream& err) {
  const std::vector<fs::path> files = signature_files(folder);
  if (files.empty()) {
    err << folder.string() << " holds no signature files (their names end in .dll).\n";
    return exit_status::wrong_usage;
  }
  std::size_t faults = 0;
  for (const fs::path& file : files) {
    const std::optional<std::string> content = read_whole_file(file, largest_file);
    if (!content) {
      out << file.string() << ": cannot be read\n";
      ++faults;
      continue;
    }
    for (const SignatureFault& fault : check_signature_file(*content)) {
      out << file.string() << ':' << fault.line << ": " << fault.fault << '\n';
      ++faults;
    }
  }
  out << files.size() << (files.size() == 1 ? " file, " : " files, ") << faults
      << (faults == 1 ? " fault\n" : " faults\n");
  return faults == 0 ? exit_status::completed : exit_status::faulty_signatures;
}

}  // namespace norvo
