#include "platform/linux/BlockDevices.h"

#include <charconv>
#include <nlohmann/json.hpp>
#include <unordered_set>
#include <utility>

namespace norvo {
namespace {

using Json = nlohmann::json;

// A disk, a partition, encryption, volume groups: each level of devices is two levels of text.
constexpr int deepest_text = 64;

const Json* member(const Json& object, const char* key) {
  const auto found = object.find(key);
  return found == object.end() ? nullptr : &*found;
}

std::string string_at(const Json& object, const char* key) {
  const Json* const value = member(object, key);
  return value != nullptr && value->is_string() ? value->get<std::string>() : std::string();
}

Text text_at(const Json& object, const char* key) {
  return Trim_Str(text_from_utf8_lossy(string_at(object, key)));
}

// Older versions write numbers and flags as texts.
std::optional<std::uint64_t> number_at(const Json& object, const char* key) {
  const Json* const value = member(object, key);
  if (value == nullptr) return std::nullopt;
  if (value->is_number_unsigned()) return value->get<std::uint64_t>();
  if (!value->is_string()) return std::nullopt;
  const auto& digits = value->get_ref<const std::string&>();
  std::uint64_t number = 0;
  const char* const end = digits.data() + digits.size();
  const auto read = std::from_chars(digits.data(), end, number);
  return read.ec == std::errc() && read.ptr == end ? std::optional(number) : std::nullopt;
}

bool flag_at(const Json& object, const char* key) {
  const Json* const value = member(object, key);
  if (value != nullptr && value->is_boolean()) return value->get<bool>();
  return number_at(object, key) == 1U;
}

// "null" is what a volume without a label has.
std::optional<Text> label_of(const Json& object) {
  const Json* const value = member(object, "label");
  if (value == nullptr || !(value->is_null() || value->is_string())) return std::nullopt;
  return value->is_null() ? Text() : text_from_utf8_lossy(value->get_ref<const std::string&>());
}

void add_mount_path(const Json& value, std::vector<std::filesystem::path>& paths) {
  if (!value.is_string()) return;
  const auto& path = value.get_ref<const std::string&>();
  if (path.starts_with('/') && path.find('\0') == std::string::npos) paths.emplace_back(path);
}

std::vector<std::filesystem::path> mount_paths_of(const Json& object) {
  std::vector<std::filesystem::path> paths;
  const Json* const several = member(object, "mountpoints");
  if (several != nullptr && several->is_array()) {
    for (const Json& path : *several) add_mount_path(path, paths);
  }
  const Json* const single = member(object, "mountpoint");
  if (single != nullptr && paths.empty()) add_mount_path(*single, paths);
  return paths;
}

BlockDevice device_of(const Json& object, const std::string& parent) {
  BlockDevice device;
  device.name = string_at(object, "kname");
  device.parent = parent.empty() ? string_at(object, "pkname") : parent;
  device.node = string_at(object, "path");
  if (device.node.empty()) device.node = "/dev/" + device.name;
  // Older versions put blanks around it.
  device.number = utf8_from_text(text_at(object, "maj:min"));
  device.type = text_at(object, "type");
  device.bytes = number_at(object, "size");
  device.removable_medium = flag_at(object, "rm");
  device.hotplug = flag_at(object, "hotplug");
  device.transport = text_at(object, "tran");
  device.vendor = text_at(object, "vendor");
  device.model = text_at(object, "model");
  device.label = label_of(object);
  device.file_system = text_at(object, "fstype");
  device.file_system_version = text_at(object, "fsver");
  device.mount_paths = mount_paths_of(object);
  return device;
}

// Gathers the devices. A mapping that lies on several disks is listed below each of them and counts
// once.
class Gatherer {
 public:
  void add(const Json& list, const std::string& parent) {
    if (!list.is_array()) return;
    for (const Json& object : list) {
      if (!object.is_object()) continue;
      BlockDevice device = device_of(object, parent);
      if (device.name.empty()) continue;
      const std::string name = device.name;
      if (names_.insert(name).second) devices_.push_back(std::move(device));
      if (const Json* const children = member(object, "children")) add(*children, name);
    }
  }

  std::vector<BlockDevice> take() { return std::move(devices_); }

 private:
  std::vector<BlockDevice> devices_;
  std::unordered_set<std::string> names_;
};

}  // namespace

std::optional<std::vector<BlockDevice>> read_block_devices(std::string_view output) {
  if (output.size() > lsblk_output_limit) return std::nullopt;
  bool too_deep = false;
  const auto watch_depth = [&](int depth, Json::parse_event_t, Json&) {
    too_deep = too_deep || depth > deepest_text;
    return !too_deep;
  };
  // A path or label in another encoding must not hide every drive.
  const std::string text = utf8_from_text(text_from_utf8_lossy(output));
  const Json root = Json::parse(text, watch_depth, false);
  if (too_deep || !root.is_object()) return std::nullopt;
  const Json* const list = member(root, "blockdevices");
  if (list == nullptr || !list->is_array()) return std::nullopt;
  Gatherer gatherer;
  gatherer.add(*list, "");
  return gatherer.take();
}

}  // namespace norvo
