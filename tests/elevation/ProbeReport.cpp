#include "elevation/ProbeReport.h"

#include <fcntl.h>

#include <cerrno>
#include <fstream>

#include "platform/System.h"
#include "util/UniqueFd.h"

namespace norvo::test {

namespace fs = std::filesystem;
using Json = nlohmann::json;

Json read_plan() {
  return Json::parse(std::ifstream(executable_folder().parent_path() / "Resources" / "plan.json"));
}

Json own_status() {
  Json fields = Json::object();
  std::ifstream file("/proc/self/status");
  for (std::string line; std::getline(file, line);) {
    const std::size_t colon = line.find(":\t");
    if (colon != std::string::npos) fields[line.substr(0, colon)] = line.substr(colon + 2);
  }
  return fields;
}

Json open_alone(const std::string& path) {
  const UniqueFd fd(open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK));
  return fd ? 0 : errno;
}

void write_report(const fs::path& path, const Json& report) {
  const fs::path unfinished = path.native() + ".part";
  std::ofstream(unfinished) << report.dump(1);
  fs::rename(unfinished, path);
}

}  // namespace norvo::test
