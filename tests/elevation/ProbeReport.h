// What the programs of the elevation tests have in common: a plan in the resources of the bundle
// that they are started from, and a report of what they found. Any thread.
#pragma once

#include <filesystem>
#include <nlohmann/json.hpp>
#include <string>

namespace norvo::test {

// Resources/plan.json of the running executable's bundle. Throws when it cannot be read.
nlohmann::json read_plan();

// The lines of /proc/self/status by their names.
nlohmann::json own_status();

// 0, or the errno with which opening `path` for reading with the process's own right fails.
nlohmann::json open_alone(const std::string& path);

// Writes the whole report before it appears under its name.
void write_report(const std::filesystem::path& path, const nlohmann::json& report);

}  // namespace norvo::test
