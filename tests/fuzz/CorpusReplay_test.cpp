// Runs a fuzz target on every file of its corpus and on every beginning of it, in ordinary builds.

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

#include "support/FileContent.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace norvo {
namespace {

std::vector<std::filesystem::path> corpus() {
  std::vector<std::filesystem::path> files;
  for (const auto& entry : std::filesystem::directory_iterator(NORVO_CORPUS)) {
    files.push_back(entry.path());
  }
  std::sort(files.begin(), files.end());
  return files;
}

// A copy of exactly this size, so that the address sanitizer sees a look beyond its end.
void run_target(const std::string& content, std::size_t size) {
  const std::vector<std::uint8_t> bytes(content.begin(),
                                        content.begin() + static_cast<std::ptrdiff_t>(size));
  EXPECT_EQ(LLVMFuzzerTestOneInput(bytes.data(), bytes.size()), 0);
}

TEST(CorpusReplay, EveryFileAndEveryBeginningOfItPasses) {
  const std::vector<std::filesystem::path> files = corpus();
  ASSERT_GE(files.size(), 5U);
  for (const std::filesystem::path& file : files) {
    SCOPED_TRACE(file);
    const std::string content = test::read_file(file);
    for (std::size_t size = 0; size <= content.size(); ++size) run_target(content, size);
  }
}

}  // namespace
}  // namespace norvo
