// A report in digital forensics XML, version 1.2.0. The pieces together are one well-formed
// document, whatever bytes names consist of.
#pragma once

#include "platform/terminal/ReportFacts.h"
#include "platform/terminal/ReportFormat.h"

namespace norvo {

class DfxmlFormat final : public ReportFormat {
 public:
  explicit DfxmlFormat(ReportFacts facts) : facts_(std::move(facts)) {}

  std::string beginning() const override;
  std::string file(const ReportedFile& file) const override;
  std::string ending() const override;

 private:
  ReportFacts facts_;
};

}  // namespace norvo
