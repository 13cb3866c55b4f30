#include "wizard/Destination.h"

#include <system_error>

#include "wizard/OpenOrTell.h"
#include "wizard/SearchTypes.h"

namespace norvo {
namespace fs = std::filesystem;

Text destination_hint_text(bool lies_on_drive, std::optional<std::uint64_t> free_space,
                           std::uint64_t found_so_far) {
  if (lies_on_drive) {
    return u"This folder lies on the drive to be searched. What is saved there can overwrite what "
           u"is still to be found; please choose a folder on another drive.";
  }
  if (free_space && found_so_far > *free_space) {
    return u"This folder has less room than the files that were found so far; please choose a "
           u"folder with more room.";
  }
  return {};
}

void Destination::Browse_Path() {
  static_cast<void>(setting_.notices.run_Browse_Info());
  setting_.notices.hide_Browse_Info();
  const std::optional<fs::path> chosen = setting_.notices.choose_folder();
  if (!chosen) return;
  chosen_ = *chosen;
  const Text path = text_from_utf8_lossy(chosen->native());
  setting_.view.set_text(Control::path, path);
  setting_.view.set_text(Control::path_Sig, path);
  show_hint(settings_page(setting_.state.Recovery_MODE));
}

fs::path Destination::folder(SettingsPage page) const {
  const Text shown = setting_.view.text(on_page(Control::path, page));
  if (shown == text_from_utf8_lossy(chosen_.native())) return chosen_;
  return utf8_from_text(shown);
}

void Destination::show_hint(SettingsPage page) {
  const fs::path destination = folder(page);
  const Text identifier = setting_.view.text(Control::disk_identifier);
  DestinationFacts& facts = setting_.facts;
  const Text hint =
      destination.empty()
          ? Text()
          : destination_hint_text(facts.lies_on_drive(destination, identifier),
                                  facts.free_space(destination), facts.found_so_far(identifier));
  setting_.view.set_text(on_page(Control::destination_hint, page), hint);
  setting_.view.set_hidden(on_page(Control::destination_hint, page), hint.empty());
}

fs::path Destination::results_folder() const {
  const std::int32_t mode = setting_.state.Recovery_MODE;
  return folder(settings_page(mode)) / utf8_from_text(setting_.edition.Rec_Folder_Name) /
         utf8_from_text(search_type(mode).result_folder);
}

void Destination::Open_Folder_btn() {
  const fs::path results = results_folder();
  std::error_code error;
  if (!fs::is_directory(results, error)) {
    setting_.boxes.Show_MessageBox(u"Destination folder does not exist!");
    return;
  }
  open_or_tell(setting_.desktop, setting_.boxes, results);
}

}  // namespace norvo
