#include "platform/terminal/SignatureReport.h"

#include <optional>
#include <string>
#include <vector>

#include "platform/terminal/ExitStatus.h"
#include "sigdb/SignatureCheck.h"
#include "sigdb/SignatureFormat.h"
#include "util/Files.h"
#include "util/Text.h"

namespace norvo {
namespace fs = std::filesystem;
namespace {

std::vector<fs::path> signature_files(const fs::path& folder) {
  std::vector<fs::path> files = entries_of(folder);
  std::erase_if(files, [](const fs::path& file) { return file.extension() != ".dll"; });
  return files;
}

// Names of files come from strangers.
std::string shown(const fs::path& path) {
  return utf8_from_text(displayable(text_from_utf8_lossy(path.native())));
}

}  // namespace

int report_signature_faults(const fs::path& folder, std::ostream& out, std::ostream& err) {
  const std::vector<fs::path> files = signature_files(folder);
  if (files.empty()) {
    err << shown(folder) << " holds no signature files (their names end in .dll).\n";
    return exit_status::wrong_usage;
  }
  std::size_t faults = 0;
  for (const fs::path& file : files) {
    const std::optional<std::string> content = read_whole_file(file, largest_signature_file);
    if (!content) {
      out << shown(file) << ": cannot be read\n";
      ++faults;
      continue;
    }
    for (const SignatureFault& fault : check_signature_file(*content)) {
      out << shown(file) << ':' << fault.line << ": " << fault.fault << '\n';
      ++faults;
    }
  }
  out << files.size() << (files.size() == 1 ? " file, " : " files, ") << faults
      << (faults == 1 ? " fault\n" : " faults\n");
  return faults == 0 ? exit_status::completed : exit_status::faulty_signatures;
}

}  // namespace norvo
