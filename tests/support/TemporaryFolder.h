// A fresh folder that goes when the test ends.
#pragma once

#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <stdexcept>
#include <string>

namespace norvo::test {

class TemporaryFolder {
 public:
  TemporaryFolder() {
    // In memory where there is such a place: the differential tests make thousands of folders.
    const bool in_memory = access("/dev/shm", W_OK) == 0;
    std::string name =
        (in_memory ? std::filesystem::path("/dev/shm") : std::filesystem::temp_directory_path()) /
        "norvo-test-XXXXXX";
    if (mkdtemp(name.data()) == nullptr) throw std::runtime_error("no temporary folder");
    path_ = name;
  }
  TemporaryFolder(const TemporaryFolder&) = delete;
  TemporaryFolder& operator=(const TemporaryFolder&) = delete;
  ~TemporaryFolder() {
    std::error_code error;
    std::filesystem::remove_all(path_, error);
  }

  const std::filesystem::path& path() const { return path_; }

 private:
  std::filesystem::path path_;
};

}  // namespace norvo::test
