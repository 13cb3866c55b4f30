// Witnesses of recovered files that keep what they saw, and read the medium at a file's runs.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <filesystem>
#include <map>
#include <memory>
#include <span>
#include <stdexcept>
#include <string>
#include <vector>

#include "engine/FileWitness.h"
#include "support/FakeDevice.h"

namespace norvo::test {

class RunCollector final : public FileWitnesses {
 public:
  struct Seen {
    std::vector<std::byte> bytes;
    std::vector<SourceRun> runs;
  };

  std::unique_ptr<FileWitness> watch(const std::filesystem::path& path) override {
    return std::make_unique<Witness>(*this, path);
  }

  // The files that were finished; none twice.
  const std::map<std::filesystem::path, Seen>& finished() const { return finished_; }

 private:
  class Witness final : public FileWitness {
   public:
    Witness(RunCollector& collector, std::filesystem::path path)
        : collector_(collector), path_(std::move(path)) {}
    void written(std::span<const std::byte> bytes) override {
      seen_.bytes.insert(seen_.bytes.end(), bytes.begin(), bytes.end());
    }
    void finished(const SourceRuns& runs) override {
      seen_.runs = runs.all();
      if (!collector_.finished_.emplace(path_, seen_).second) {
        throw std::logic_error("finished twice: " + path_.string());
      }
    }

   private:
    RunCollector& collector_;
    std::filesystem::path path_;
    Seen seen_;
  };

  std::map<std::filesystem::path, Seen> finished_;
};

// What the medium holds at the runs, whether it can be read there or not. Runs of unknown origin
// give as many zeros.
inline std::vector<std::byte> bytes_at(const FakeMedium& medium,
                                       const std::vector<SourceRun>& runs) {
  std::vector<std::byte> bytes;
  for (const SourceRun& run : runs) {
    for (std::uint64_t i = 0; i < run.sectors; ++i) {
      std::vector<std::byte> sector(sector_size);
      if (run.origin.kind != SectorOrigin::Kind::unknown) {
        const std::uint64_t number = run.origin.after(i).sector;
        if (medium.sector) {
          medium.sector(number, sector);
        } else {
          std::memcpy(sector.data(), medium.bytes.data() + number * sector_size, sector_size);
        }
      }
      bytes.insert(bytes.end(), sector.begin(), sector.end());
    }
  }
  return bytes;
}

// The runs as a text: "4" or "4-9" for sectors read, "!3x2" for two unread ones that hold what
// sector 3 holds, "?x1" for one of unknown origin. Numbers count from sector `start` on.
inline std::string text_of(const std::vector<SourceRun>& runs, std::uint64_t start) {
  std::string text;
  for (const SourceRun& run : runs) {
    if (!text.empty()) text += ' ';
    const std::string first = std::to_string(run.origin.sector - start);
    const std::string count = "x" + std::to_string(run.sectors);
    if (run.origin.kind == SectorOrigin::Kind::unknown) {
      text += "?" + count;
    } else if (run.origin.kind == SectorOrigin::Kind::repeated) {
      text += "!" + first + count;
    } else {
      const std::uint64_t last = run.origin.sector - start + run.sectors - 1;
      text += run.sectors == 1 ? first : first + "-" + std::to_string(last);
    }
  }
  return text;
}

// The finished files' runs as texts, by the names of the files.
using Runs = std::map<std::string, std::string>;

inline Runs runs_of(const RunCollector& collector, std::uint64_t start) {
  Runs runs;
  for (const auto& [path, seen] : collector.finished()) {
    runs[path.filename()] = text_of(seen.runs, start);
  }
  return runs;
}

}  // namespace norvo::test
