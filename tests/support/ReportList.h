// A listener that keeps every report. One worker at a time; read after it has ended.
#pragma once

#include <vector>

#include "app/MyTableController.h"
#include "support/Recorder.h"

namespace norvo::test {

class ReportList final : public ReportListener {
 public:
  void file_reported(const std::filesystem::path& path, TextView imageName, TextView image_UID,
                     const ItemReport& report) override {
    reports.push_back({path, Text(imageName), Text(image_UID)});
    added.push_back(report.item_added);
  }

  void images_emptied() override { ++emptied; }

  int emptied = 0;
  std::vector<Report> reports;
  std::vector<bool> added;  // whether each report added an item
};

}  // namespace norvo::test
