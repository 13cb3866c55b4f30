#include "app/WindowSession.h"

#include <system_error>
#include <utility>

#include "util/Numbers.h"
#include "wizard/ExitQuestion.h"
#include "wizard/SearchTypes.h"

namespace norvo {
namespace fs = std::filesystem;

EditionPresentation presentation_of(const EditionProfile& profile) {
  return {.APP_LONG_NAME = profile.APP_LONG_NAME,
          .Rec_Folder_Name = profile.Rec_Folder_Name,
          .signature_files = profile.signature_files,
          .hides_search_types = profile.hides_search_types(),
          .raw_file_choice_title = profile.raw_file_choice_title(),
          .support_address = profile.support_address,
          .reseller_address = profile.reseller_address,
          .support_with_content = profile.support_with_content,
          .web_address = profile.web_address,
          .web_address_2 = profile.web_address_2};
}

WindowSession::WindowSession(const Setting& setting)
    : setting_(setting),
      edition_(presentation_of(setting.controller.profile())),
      boxes_(setting.panel, setting.main_thread),
      drive_screen_(setting.view, setting.controller.wizard, setting.notices, setting.drives),
      range_(setting.view),
      destination_({.view = setting.view,
                    .state = setting.controller.wizard,
                    .notices = setting.notices,
                    .desktop = setting.desktop,
                    .boxes = boxes_,
                    .facts = *this,
                    .edition = edition_}),
      wizard_({.view = setting.view,
               .state = setting.controller.wizard,
               .edition = edition_,
               .boxes = boxes_,
               .host = *this,
               .drives = setting.drives,
               .drive_screen = drive_screen_,
               .range = range_,
               .destination = destination_,
               .check_list = setting.controller.check_list(),
               .tables = setting.controller.tables(),
               .gallery = setting.controller.gallery(),
               .preview = setting.preview}),
      results_(setting.view, setting.controller.wizard, setting.desktop, boxes_,
               setting.controller.gallery(), setting.preview,
               setting.resource_folder / no_preview_name),
      help_({.notices = setting.notices,
             .desktop = setting.desktop,
             .panel = setting.panel,
             .boxes = boxes_,
             .edition = edition_,
             .help_file = setting.resource_folder / "Help.pdf"}) {
  setting_.operations.attach({.controller = setting_.controller,
                              .view = setting_.view,
                              .screens = wizard_.screens(),
                              .boxes = boxes_,
                              .notices = setting_.notices,
                              .permissions = setting_.permissions,
                              .out = setting_.out,
                              .log = setting_.log,
                              .searching_changed = [this](bool on) { searching_changed(on); }});
}

// A search tells the person through the session's parts.
WindowSession::~WindowSession() {
  setting_.controller.state().stop_now = 1;
  setting_.controller.wait_for_worker();
}

void WindowSession::set_up() {
  setting_.controller.load_signature_tables(setting_.resource_folder);
  setting_.controller.gallery().load_placeholder(setting_.resource_folder / no_preview_name);
  wizard_.set_up();
}

void WindowSession::preview_shown() {
  const std::atomic<std::int32_t>& stop_now = setting_.controller.state().stop_now;
  const auto delay = final_screen_delay(stop_now);
  if (!delay || !searching_ || waiting_ || setting_.modal_session_is_open()) return;
  // By then the search may have seen the stop itself, and the person may have started another one.
  setting_.main_thread.post_after(*delay, [this, &stop_now, search = search_number_] {
    if (search != search_number_ || !searching_ || !final_screen_delay(stop_now)) return;
    setting_.operations.post_Final_or_Stop_Screen();
  });
}

SavedNotice WindowSession::saved_notice() const {
  return norvo::saved_notice(searched_, setting_.operations.found_bytes() != 0,
                             destination_.results_folder());
}

void WindowSession::clicked(Control control) {
  switch (control) {
    case Control::next_btn:
      return wizard_.Next_btn();
    case Control::back_btn:
      return wizard_.Back_btn();
    case Control::refresh_btn:
      return drive_screen_.rebresh_drives();
    case Control::rec_mode_Photo:
      return drive_screen_.Photo_Mode_Radio();
    case Control::rec_mode_Video:
      return drive_screen_.Video_Mode_Radio();
    case Control::rec_mode_RawFile:
      return drive_screen_.RawFile_Mode_Radio();
    case Control::rec_mode_Audio:
      return drive_screen_.Audio_Mode_Radio();
    case Control::entire_disk_rd:
      return range_.Entire_Disk_Radio(SettingsPage::photo);
    case Control::entire_disk_rd_Sig:
      return range_.Entire_Disk_Radio(SettingsPage::signature);
    case Control::sector_range_rd:
      return range_.Sector_Range_Radio(SettingsPage::photo);
    case Control::sector_range_rd_Sig:
      return range_.Sector_Range_Radio(SettingsPage::signature);
    case Control::browse_path:
    case Control::browse_path_Sig:
      return destination_.Browse_Path();
    case Control::open_folder:
    case Control::open_folder_Sig:
      return destination_.Open_Folder_btn();
    case Control::select_unselect_Chk:
      return wizard_.Select_Unselect_Check_btn();
    case Control::stop_scan:
      return stop_usb_disk();
    case Control::help_btn:
      return help_.Help_btn();
    case Control::contact_btn:
      return help_.Contact_Us_btn();
    case Control::exit_btn:
      return Exit_App(setting_.panel, setting_.desktop);
    default:
      return;
  }
}

void WindowSession::changed(Control control) {
  switch (control) {
    case Control::Start_Slider:
      return range_.DO_Start_slider(SettingsPage::photo);
    case Control::Start_Slider_Sig:
      return range_.DO_Start_slider(SettingsPage::signature);
    case Control::End_Slider:
      return range_.DO_End_slider(SettingsPage::photo);
    case Control::End_Slider_Sig:
      return range_.DO_End_slider(SettingsPage::signature);
    case Control::zoom_slider:
      return results_.zoomSliderDidChange();
    case Control::path:
    case Control::path_Sig:
      return path_typed();
    default:
      return range_.controlTextDidChange(control);
  }
}

// Each look at a folder can take long, on a share that does not answer say, so it has to wait until
// the typing pauses.
void WindowSession::path_typed() {
  constexpr std::chrono::milliseconds pause{300};
  setting_.main_thread.post_after(pause, [this, edit = ++path_edits_] {
    const WizardState& wizard = setting_.controller.wizard;
    if (edit != path_edits_ || wizard.screen_counter != 1) return;
    destination_.show_hint(settings_page(wizard.Recovery_MODE));
  });
}

void WindowSession::double_clicked(Control view, std::size_t index) {
  results_.cellWasDoubleClickedAtIndex(view, index);
}

void WindowSession::selection_changed(Control view) {
  if (view == Control::imageBrowser_2) results_.imageBrowserSelectionDidChange();
}

void WindowSession::removed(Control view, const std::vector<std::size_t>& indexes) {
  results_.removeItemsAtIndexes(view, indexes);
}

void WindowSession::moved(Control view, const std::vector<std::size_t>& indexes,
                          std::size_t destination) {
  results_.moveItemsAtIndexes(view, indexes, destination);
}

void WindowSession::disk_image_chosen(const fs::path& image) {
  if (drive_screen_.open_disk_image(image)) return;
  boxes_.Show_MessageBox(u"\u201C" + displayable(text_from_utf8_lossy(image.filename().native())) +
                         u"\u201D cannot be searched: it is no readable disk image.");
}

void WindowSession::windowShouldClose() {
  Exit_App(setting_.panel, setting_.desktop);
}

// A pass that still waits for its drive would search on when the request is gone; it takes it back
// itself.
void WindowSession::clear_stop_now() {
  ScanState& state = setting_.controller.state();
  if (!state.pass_running) state.stop_now = 0;
}

void WindowSession::hand_over_selection() {
  setting_.controller.hand_over_selection(setting_.controller.wizard.Recovery_MODE);
}

// A disk image's identifier is its path; a drive's is a name without a slash.
fs::path WindowSession::device_of(TextView disk_identifier) const {
  if (disk_identifier.starts_with(u'/')) return utf8_from_text(disk_identifier);
  return setting_.raw_node(disk_identifier);
}

void WindowSession::Check_Have_Permissions(TextView disk_identifier) {
  setting_.permissions.Check_Have_Permissions(device_of(disk_identifier));
}

// The main thread never waits for a worker: it may wait for a drive that does not answer, or for
// this thread to show its box.
void WindowSession::start_search(const SearchSettings& settings) {
  ++search_number_;
  if (!worker_runs_) return begin_search(settings);
  waiting_ = settings;
  setting_.controller.state().stop_now = 1;
  setting_.operations.abandon_search();
  searching_changed(true);
  wizard_.show_waiting_search();
}

void WindowSession::begin_search(const SearchSettings& settings) {
  // The answer to a stop question that outlasted the last search must not count for this one.
  setting_.controller.state().stop_now = 0;
  setting_.operations.begin_search();
  searched_ = settings;
  worker_runs_ = true;
  setting_.controller.start_search(
      {.Recovery_MODE = settings.Recovery_MODE,
       .device_path = device_of(settings.disk_identifier),
       .sectors_val = static_cast<std::uint64_t>(integer64_value(settings.sectors_val)),
       .entire_disk = settings.entire_disk,
       .sector_range = settings.sector_range,
       .start_slider_val = settings.start_slider_val,
       .end_slider_val = settings.end_slider_val,
       .thorough = settings.thorough,
       .destination = settings.destination,
       .Rec_Folder_Name = edition_.Rec_Folder_Name},
      nullptr, [this] { setting_.main_thread.post([this] { worker_ended(); }); });
}

// All that the worker has asked of this thread was done before.
void WindowSession::worker_ended() {
  worker_runs_ = false;
  const std::optional<SearchSettings> settings = std::exchange(waiting_, std::nullopt);
  if (!settings) return;
  // The last files of the search before were counted in the rows of this one.
  if (settings->Recovery_MODE != 0) {
    hand_over_selection();
    setting_.view.reload(Control::idSigTableView);
  }
  begin_search(*settings);
}

// A search that only waited to begin has found nothing to tell of: the person is back where it was
// started.
void WindowSession::stop_usb_disk() {
  const bool stops = setting_.controller.stop_usb_disk(setting_.panel);
  if (!stops || !waiting_) return;
  waiting_.reset();
  searching_changed(false);
  wizard_.Back_btn();
}

bool WindowSession::lies_on_drive(const fs::path& folder, TextView disk_identifier) {
  return setting_.lies_on_device(folder, device_of(disk_identifier));
}

std::optional<std::uint64_t> WindowSession::free_space(const fs::path& folder) {
  std::error_code error;
  const fs::space_info space = fs::space(folder, error);
  if (error) return std::nullopt;
  return space.available;
}

std::uint64_t WindowSession::found_so_far(TextView disk_identifier) {
  // How much lies on one drive says nothing of another.
  if (disk_identifier != searched_.disk_identifier) return 0;
  return setting_.operations.found_bytes();
}

void WindowSession::searching_changed(bool searching) {
  if (std::exchange(searching_, searching) != searching) setting_.searching_changed(searching);
}

}  // namespace norvo
