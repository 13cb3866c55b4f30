// Sinks of a search that write down what they are told, in its order.
#pragma once

#include <chrono>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <mutex>
#include <string>
#include <variant>
#include <vector>

#include "engine/ScanOperations.h"
#include "engine/ScanResults.h"
#include "results/FoundFilesTable.h"
#include "results/Gallery.h"

namespace norvo::test {

struct MessageBox {
  Text text;
  bool operator==(const MessageBox&) const = default;
};
struct PermissionAlert {
  int error;
  bool operator==(const PermissionAlert&) const = default;
};
struct GenericAlert {
  int error;
  bool operator==(const GenericAlert&) const = default;
};
struct FinalScreenPosted {
  bool operator==(const FinalScreenPosted&) const = default;
};
struct SaveInfoRun {
  bool operator==(const SaveInfoRun&) const = default;
};
struct SaveInfoClosed {
  bool operator==(const SaveInfoClosed&) const = default;
};
struct Pause {
  std::chrono::milliseconds duration;
  bool operator==(const Pause&) const = default;
};
struct Report {
  std::filesystem::path path;
  Text name;
  Text uid;
  bool operator==(const Report&) const = default;
};
struct ImagesEmptied {
  bool operator==(const ImagesEmptied&) const = default;
};
struct CountReset {
  bool operator==(const CountReset&) const = default;
};

using Recorded =
    std::variant<ScanOperation, MessageBox, PermissionAlert, GenericAlert, FinalScreenPosted,
                 SaveInfoRun, SaveInfoClosed, Pause, Report, ImagesEmptied, CountReset>;

// Both sinks write into one list, so that their order among each other is seen.
class Recorder final : public ScanOperations, public ScanResults {
 public:
  std::vector<Recorded> recorded() const {
    const std::lock_guard lock(mutex_);
    return recorded_;
  }

  // The recorded entries of one kind.
  template <typename Kind>
  std::vector<Kind> all() const {
    std::vector<Kind> found;
    for (const Recorded& entry : recorded()) {
      if constexpr (std::is_constructible_v<ScanOperation, Kind>) {
        const auto* operation = std::get_if<ScanOperation>(&entry);
        const auto* kind = operation != nullptr ? std::get_if<Kind>(operation) : nullptr;
        if (kind != nullptr) found.push_back(*kind);
      } else if (const auto* kind = std::get_if<Kind>(&entry)) {
        found.push_back(*kind);
      }
    }
    return found;
  }

  std::function<void(const Recorded&)> on_entry;  // called after every entry was written down
  std::function<void(const Report&)> on_report;   // called inside every report
  std::function<void()> on_message;
  int save_info_code = 1;
  bool window_is_modal = false;
  Gallery gallery;
  FoundFilesTable found_files;

  void perform(const ScanOperation& operation) override { record(operation); }
  void Show_MessageBox(TextView message) override {
    record(MessageBox{Text(message)});
    if (on_message) on_message();
  }
  void showPermissionAlertAndGuideUser(int error) override { record(PermissionAlert{error}); }
  void showGenericErrorAlert(int error) override { record(GenericAlert{error}); }
  void post_Final_or_Stop_Screen() override { record(FinalScreenPosted{}); }
  bool main_window_is_modal() const override { return window_is_modal; }
  int run_SaveFile_Info_Window() override {
    record(SaveInfoRun{});
    return save_info_code;
  }
  void close_SaveFile_Info_Window() override { record(SaveInfoClosed{}); }
  void pause(std::chrono::milliseconds duration) override { record(Pause{duration}); }

  void addImageWithPath(const std::filesystem::path& path, TextView imageName,
                        TextView image_UID) override {
    const Report report{path, Text(imageName), Text(image_UID)};
    record(report);
    gallery.addImageWithPath(path, imageName, image_UID);
    if (on_report) on_report(report);
  }
  void addImageWithPath_2(const std::filesystem::path& path, TextView imageName,
                          TextView image_UID) override {
    const Report report{path, Text(imageName), Text(image_UID)};
    record(report);
    if (gallery.addImageWithPath_2(path, imageName, image_UID).item_added) {
      found_files.count_file(path, imageName);
    }
    if (on_report) on_report(report);
  }
  std::optional<std::uint64_t> NoOfFile(TextView FileTypes_Hidden) const override {
    return found_files.NoOfFile(FileTypes_Hidden);
  }
  std::uint64_t Shown_Item_Count() const override { return gallery.Shown_Item_Count(); }
  void reset_Shown_Item_Count() override {
    record(CountReset{});
    gallery.reset_Shown_Item_Count();
  }
  void empty_images() override {
    record(ImagesEmptied{});
    gallery.empty_images();
  }

 private:
  void record(const Recorded& entry) {
    {
      const std::lock_guard lock(mutex_);
      recorded_.push_back(entry);
    }
    if (on_entry) on_entry(entry);
  }

  mutable std::mutex mutex_;
  std::vector<Recorded> recorded_;
};

}  // namespace norvo::test
