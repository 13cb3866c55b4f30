// What the drive list asks the operating system: which volumes are mounted, and what is known about
// each. A system answers through DiskUtility, with the same keys everywhere.
#pragma once

#include <cstdint>
#include <filesystem>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "util/Text.h"

namespace norvo {

// A report on one volume or disk: a dictionary of texts and unsigned integers under the keys
// "DeviceIdentifier", "VolumeName", "FilesystemUserVisibleName", "IOKitSize" (bytes),
// "ParentWholeDisk", "BusProtocol", "OpticalDeviceType" and "MediaName". A key may be absent, which
// is not the same as an empty text. Texts come from strangers; show them with displayable().
class DiskReport {
 public:
  void set(std::string_view key, TextView text) {
    entries_.insert_or_assign(std::string(key), Text(text));
  }
  void set(std::string_view key, std::uint64_t number) {
    entries_.insert_or_assign(std::string(key), number);
  }

  // Nullopt when there is no such key or when it holds a number.
  std::optional<Text> text(std::string_view key) const { return value<Text>(key); }

  // Nullopt when there is no such key or when it holds a text.
  std::optional<std::uint64_t> number(std::string_view key) const {
    return value<std::uint64_t>(key);
  }

  bool operator==(const DiskReport&) const = default;

 private:
  template <typename Value>
  std::optional<Value> value(std::string_view key) const {
    const auto entry = entries_.find(key);
    if (entry == entries_.end()) return std::nullopt;
    const Value* const value = std::get_if<Value>(&entry->second);
    return value == nullptr ? std::nullopt : std::optional<Value>(*value);
  }

  std::map<std::string, std::variant<Text, std::uint64_t>, std::less<>> entries_;
};

// One thread at a time. Calls may take seconds, as programs are run for them.
class DiskUtility {
 public:
  virtual ~DiskUtility() = default;

  // Mount paths in the system's order; empty when there are none or they cannot be told. A volume
  // that is mounted at several places may have several. Each call looks anew.
  virtual std::vector<std::filesystem::path> mountedRemovableMedia() = 0;
  virtual std::vector<std::filesystem::path> mountedLocalVolumePaths() = 0;

  // The report on what is mounted at `path`, or on the disk that `path` names by its identifier or
  // node. Nullopt when nothing can be told. After an enumeration the answer may be as old as that.
  virtual std::optional<DiskReport> info(const std::filesystem::path& path) = 0;
};

}  // namespace norvo
