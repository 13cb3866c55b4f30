// The whole program inside the test, on a disk image with a JPEG and a PNG file.
#pragma once

#include <gtest/gtest.h>

#include <atomic>
#include <filesystem>
#include <memory>
#include <sstream>
#include <string>
#include <vector>

#include "platform/System.h"
#include "platform/terminal/NorvoRecover.h"
#include "storage/FakeDiskUtility.h"
#include "support/FileContent.h"
#include "support/TemporaryFolder.h"
#include "terminal/QuotedJson.h"

namespace norvo::test {

inline const std::string general_pass = json(
    "{'event':'pass','pass':'GEN','label':'( Currently performing Search based on: "
    "Norvo General Recovery Procedure )'}");
inline const std::string thorough_pass = json(
    "{'event':'pass','pass':'THD','label':'( Currently performing Search based on: "
    "Norvo Thorough Scanning Algorithm )'}");

inline std::string final_event(const std::string& outcome) {
  return json("{'event':'final','outcome':'" + outcome + "'}");
}

inline std::vector<std::string> lines_of(const std::string& text) {
  std::vector<std::string> lines;
  std::istringstream stream(text);
  for (std::string line; std::getline(stream, line);) lines.push_back(line);
  return lines;
}

class ProgramOnImage : public testing::Test {
 protected:
  ProgramOnImage() {
    std::filesystem::create_directory(shipped());
    write_file(shipped() / "SPRExt2.dll",
               "E : .jpg\nS : 1536\nHeader : FFD8FF\nP : 1\nK :\nD : JPEG image\n");
    write_file(shipped() / "SPRExt2Adv.dll",
               "E : .png\nS : 5000\nHeader : 89504E47\nP : 1\nK :\nD : PNG image\n");
    write_image(zero_sectors(1) + jpeg_ + sector_of("", 'a') + sector_of("", 'b') +
                sector_of("", 'c') + png_ + sector_of("", 'd') + sector_of("", 'e'));
  }

  std::filesystem::path shipped() const { return folder_.path() / "signatures"; }
  std::filesystem::path image() const { return folder_.path() / "card.img"; }
  std::filesystem::path destination() const { return folder_.path() / "out"; }
  std::filesystem::path results() const {
    return destination() / "Norvo Spruce Results/Photo Search";
  }
  void write_image(const std::string& content) const { write_file(image(), content); }

  int run(const std::vector<std::string>& arguments) {
    std::vector<const char*> pointers;
    for (const std::string& argument : arguments) pointers.push_back(argument.c_str());
    out_.str("");
    err_.str("");
    return norvo_recover(pointers, {.opener = *opener_,
                                    .disk_utility = disk_utility_,
                                    .shipped_signatures = shipped(),
                                    .out = out_,
                                    .err = err_,
                                    .err_is_terminal = err_is_terminal_,
                                    .publish_stop_flag = publish_stop_flag_});
  }

  int search(const std::vector<std::string>& options = {}) {
    std::vector<std::string> arguments{"--device", image().string(), "--destination",
                                       destination().string()};
    arguments.insert(arguments.end(), options.begin(), options.end());
    return run(arguments);
  }

  std::string file_event(const std::string& pass, const std::filesystem::path& path) const {
    const std::string name = path.filename().string();
    return json("{'event':'file','pass':'" + pass + "','path':'" + (results() / path).string() +
                "','name':'" + name + "','uid':'" + name + "'}");
  }

  const std::string jpeg_ = sector_of("\xFF\xD8\xFF", '1');
  const std::string png_ = sector_of("\x89PNG", '2');
  const std::filesystem::path jpeg_path_ = "General Recovery Results/JPG/GND00001.JPG";
  const std::filesystem::path png_path_ = "Omitted (recovered by Thorough Scan)/PNG/THD00001.PNG";
  TemporaryFolder folder_;
  std::ostringstream out_;
  std::ostringstream err_;
  bool err_is_terminal_ = false;
  void (*publish_stop_flag_)(std::atomic<std::int32_t>*) = nullptr;
  FakeDiskUtility disk_utility_;
  std::unique_ptr<DeviceOpener> opener_ = make_system_device_opener();
};

}  // namespace norvo::test
