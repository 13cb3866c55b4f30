#include "platform/terminal/RecoveryReport.h"

#include <system_error>
#include <utility>

#include "platform/terminal/Sha256.h"

namespace norvo {

class RecoveryReport::Witness final : public FileWitness {
 public:
  Witness(RecoveryReport& report, std::filesystem::path path)
      : report_(report), path_(std::move(path)) {}

  void written(std::span<const std::byte> bytes) override {
    digest_.add(bytes);
    bytes_ += bytes.size();
  }

  void finished(const SourceRuns& runs) override {
    report_.seen_ = Seen{.path = std::move(path_),
                         .bytes = bytes_,
                         .evidence = {.sha256 = digest_.digits(), .runs = byte_runs(runs.all())}};
  }

 private:
  RecoveryReport& report_;
  std::filesystem::path path_;
  std::uint64_t bytes_ = 0;
  Sha256 digest_;
};

RecoveryReport::RecoveryReport(std::filesystem::path path, std::unique_ptr<ReportFormat> format,
                               std::filesystem::path destination)
    : path_(std::move(path)), format_(std::move(format)), destination_(std::move(destination)) {
}

int RecoveryReport::begin() {
  if (const int error = file_.create(path_); error != 0) return error;
  const int error = file_.add(format_->beginning());
  if (error == 0) return 0;
  std::error_code ignored;
  std::filesystem::remove(path_, ignored);
  return error;
}

std::unique_ptr<FileWitness> RecoveryReport::watch(const std::filesystem::path& path) {
  return std::make_unique<Witness>(*this, path);
}

std::optional<std::string> RecoveryReport::file_reported(Pass pass,
                                                         const std::filesystem::path& path) {
  const std::optional<Seen> seen = std::exchange(seen_, std::nullopt);
  if (!whole_) return std::nullopt;
  const std::filesystem::path& place = seen ? seen->path : path;
  ReportedFile file{.filename = reportable(place.lexically_relative(destination_).native()),
                    .pass = pass};
  if (seen) {
    file.size = seen->bytes;
    file.evidence = seen->evidence;
  } else {
    std::error_code error;
    const std::uintmax_t size = std::filesystem::file_size(place, error);
    if (!error) file.size = size;
  }
  if (const int error = file_.add(format_->file(file)); error != 0) return lost(error);
  return std::nullopt;
}

std::optional<std::string> RecoveryReport::end() {
  int error = whole_ ? file_.add(format_->ending()) : 0;
  const int closing = file_.close();
  if (error == 0) error = closing;
  if (error == 0 || !whole_) return std::nullopt;
  return lost(error);
}

std::optional<std::string> RecoveryReport::lost(int error) {
  whole_ = false;
  return "The report " + path_.string() +
         " could not be written any further: " + std::generic_category().message(error) +
         ". The recovered files are not affected; what the report holds up to here is right.";
}

}  // namespace norvo
