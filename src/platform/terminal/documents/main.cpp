// make_recover_documents PAGE MANUAL BASH ZSH FISH
//
// Writes the manual page from the text PAGE, and the completions for three shells, into the files
// named. Ends with 1 when one cannot be read or written.
#include <filesystem>
#include <fstream>
#include <iostream>
#include <sstream>

#include "platform/terminal/documents/Completions.h"
#include "platform/terminal/documents/ManualPage.h"

namespace {

bool write_file(const std::filesystem::path& path, const std::string& content) {
  std::error_code error;
  std::filesystem::create_directories(path.parent_path(), error);
  std::ofstream file(path, std::ios::binary);
  file << content << std::flush;
  if (!file) std::cerr << path.string() << " cannot be written.\n";
  return static_cast<bool>(file);
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 6) {
    std::cerr << "Usage: make_recover_documents PAGE MANUAL BASH ZSH FISH\n";
    return 2;
  }
  const std::ifstream file(argv[1], std::ios::binary);
  std::ostringstream page;
  page << file.rdbuf();
  if (!file || page.str().empty()) {
    std::cerr << argv[1] << " cannot be read.\n";
    return 1;
  }
  const auto options = norvo::command_line_options();
  const bool written = write_file(argv[2], norvo::manual_page(page.str(), options)) &&
                       write_file(argv[3], norvo::bash_completion(options)) &&
                       write_file(argv[4], norvo::zsh_completion(options)) &&
                       write_file(argv[5], norvo::fish_completion(options));
  return written ? 0 : 1;
}
