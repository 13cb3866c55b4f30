// A recovered file as a report tells of it.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "engine/ScanOperations.h"
#include "engine/SourceRuns.h"

namespace norvo {

// `length` bytes of the file from byte `offset` on. All numbers are bytes.
struct ByteRun {
  std::uint64_t offset = 0;
  std::uint64_t length = 0;
  // Where they lie on the device; none for bytes that stand in for sectors that could not be read.
  std::optional<std::uint64_t> img_offset = std::nullopt;
  // For bytes that stand in: where the sector lies that each sector of them repeats, if it does.
  std::optional<std::uint64_t> repeats = std::nullopt;

  bool operator==(const ByteRun&) const = default;
};

std::vector<ByteRun> byte_runs(const std::vector<SourceRun>& runs);

// What was seen of a file while it was written.
struct FileEvidence {
  std::string sha256;
  std::vector<ByteRun> runs;
};

struct ReportedFile {
  std::string filename;  // as reportable() makes it
  std::uint64_t size = 0;
  Pass pass = Pass::general;
  // None for a file that was left open by a search that a broken signature table ended.
  std::optional<FileEvidence> evidence = std::nullopt;
};

// The name of a pass in reports: "General" or "Thorough".
std::string pass_name(Pass pass);

// `bytes` as UTF-8 that XML 1.0 can hold: U+FFFD stands for what is no UTF-8 and for characters
// that may not occur, control characters other than tabulator and line feed above all. The carriage
// return is among them, as readers would make a line feed of it.
std::string reportable(std::string_view bytes);

}  // namespace norvo
