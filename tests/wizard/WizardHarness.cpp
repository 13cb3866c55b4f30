#include "wizard/WizardHarness.h"

#include <utility>

namespace norvo::test {
namespace {

void add_type(SignatureTable& table, TextView extension, TextView description) {
  for (const TextView entry : {extension, TextView(u"4096"), TextView(u"FFD8"), TextView(u"1"),
                               TextView(u""), description, TextView(u"255")}) {
    table.emplace_back(entry);
  }
}

}  // namespace

EditionPresentation usual_edition() {
  EditionPresentation edition;
  edition.APP_LONG_NAME = u"Norvo Long Name";
  edition.Rec_Folder_Name = u"Norvo Results";
  edition.signature_files.photo_dll = u"SPRExt2.dll";
  edition.signature_files.video_dll = u"SPRVideo.dll";
  edition.signature_files.raw_dll = u"SPRRaw.dll";
  edition.support_address = u"help@norvo.example";
  edition.reseller_address = u"sell@norvo.example";
  edition.support_with_content = u"mailto:help@norvo.example?subject=Question";
  edition.web_address = u"https://norvo.example";
  edition.web_address_2 = u"https://norvo.example/spruce";
  return edition;
}

WizardHarness::WizardHarness(EditionPresentation presentation)
    : edition(std::move(presentation)),
      destination({.view = view,
                   .state = state,
                   .notices = notices,
                   .desktop = desktop,
                   .boxes = boxes,
                   .facts = facts,
                   .edition = edition}),
      wizard({.view = view,
              .state = state,
              .edition = edition,
              .boxes = boxes,
              .host = host,
              .drives = drives,
              .drive_screen = drive_screen,
              .range = range,
              .destination = destination,
              .check_list = check_list,
              .tables = tables,
              .gallery = gallery,
              .preview = preview}) {
  disks.add_volume(u"sdb1", u"HOLIDAY", u"FAT32", 512'000);
  disks.add_volume(u"sdc1", u"WORK", u"exFAT", 4'398'046'511'104);
  add_type(tables.Video_Array, u"MOV", u"Movie");
  add_type(tables.Video_Array, u"AVI", u"Old movie");
  add_type(tables.Adv_Video_Array, u"AVI", u"Another AVI");
  add_type(tables.Adv_Video_Array, u"mkv", u"Container");
  add_type(tables.RawFile_Array, u"NEF", u"Camera raw");
  add_type(tables.Audio_Array, u"MP3", u"Music");
}

std::vector<std::string> WizardHarness::happened() {
  std::vector<std::string> history = view.history();
  log.clear();
  return history;
}

void WizardHarness::open() {
  wizard.set_up();
  log.clear();
}

void WizardHarness::choose_mode(std::int32_t mode) {
  if (mode == 0) drive_screen.Photo_Mode_Radio();
  if (mode == 1) drive_screen.Video_Mode_Radio();
  if (mode == 2) drive_screen.RawFile_Mode_Radio();
  if (mode == 3) drive_screen.Audio_Mode_Radio();
}

void WizardHarness::go_to_settings(std::int32_t mode) {
  open();
  choose_mode(mode);
  view.person_selects(Control::idTableView, 0);
  wizard.Next_btn();
  log.clear();
}

void WizardHarness::go_to_screen_3(std::int32_t mode) {
  go_to_settings(mode);
  view.type(mode == 0 ? Control::path : Control::path_Sig, u"/out");
  wizard.Next_btn();
  log.clear();
}

void WizardHarness::go_to_file_scan(std::int32_t mode) {
  go_to_screen_3(mode);
  wizard.Next_btn();
  log.clear();
}

}  // namespace norvo::test
