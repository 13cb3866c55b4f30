#include "app/SessionHarness.h"

#include <cstring>
#include <map>

#include "support/FileContent.h"

namespace norvo::test {
namespace {

std::string record(const std::string& type, const std::string& header) {
  return "E : ." + type + "\nS : 1536\nHeader : " + header + "\nP : 1\nK :\nD : " + type + "\n";
}

bool is_repeated_by_the_timer(const std::string& entry) {
  return entry.starts_with("text _sector_label ") || entry.starts_with("value _Progress_Horz ") ||
         entry.starts_with("text _time_left ");
}

}  // namespace

SessionHarness::SessionHarness(std::uint64_t sectors)
    : permissions({.USE_HARD_DISK = false,
                   .process_name = u"Norvo",
                   .bundle_identifier = u"norvo.example",
                   .platform_help = {},
                   .probe = probe,
                   .privacy_reset = nullptr,
                   .address_opener = nullptr,
                   .panel = panel,
                   .out = out,
                   .log = system_log}) {
  write_signatures();
  disks.add_volume(u"sdb1", u"CARD", u"FAT32", sectors * sector_size);
  session = std::make_unique<WindowSession>(WindowSession::Setting{
      .controller = controller,
      .operations = operations,
      .drives = drives,
      .view = view,
      .main_thread = main_thread,
      .panel = panel,
      .notices = notices,
      .desktop = desktop,
      .preview = preview,
      .permissions = permissions,
      .resource_folder = folder.path(),
      .raw_node =
          [](TextView identifier) {
            return std::filesystem::path("/dev/r" + utf8_from_text(identifier));
          },
      .lies_on_device =
          [this](const std::filesystem::path& saved_to, const std::filesystem::path& device) {
            asked_on_device.emplace_back(saved_to, device);
            return lies_on_device;
          },
      .searching_changed =
          [this](bool searching) { log.add(searching ? "search begins" : "search ends"); },
      .modal_session_is_open = [this] { return modal_session; },
      .out = out,
      .log = system_log});
  session->set_up();
  log.clear();
}

void SessionHarness::write_signatures() const {
  const std::filesystem::path& signatures = folder.path();
  write_file(signatures / "BIRExt2.dll", record("jpg", "FFD8FF"));
  write_file(signatures / "BIRExt2Adv.dll", record("png", "89504E47"));
  write_file(signatures / "BIRVideo.dll", record("mov", "6D6F6F76") + record("avi", "52494646"));
  write_file(signatures / "BIRVideoAdv.dll", record("mkv", "1A45DFA3"));
}

void SessionHarness::draw(const std::string& sectors) {
  const std::map<char, std::string> headers{{'J', "\xFF\xD8\xFF"},
                                            {'P', "\x89PNG"},
                                            {'M', "moov"},
                                            {'A', "RIFF"},
                                            {'K', "\x1A\x45\xDF\xA3"}};
  medium.bytes.clear();
  for (const char letter : sectors) {
    const auto header = headers.find(letter);
    const std::string sector =
        sector_of(header == headers.end() ? std::string() : header->second, letter);
    medium.bytes.insert(medium.bytes.end(), sector.begin(), sector.end());
  }
}

void SessionHarness::make_headers(std::uint64_t sectors, const std::string& header) {
  medium.made_sectors = sectors;
  medium.sector = [header](std::uint64_t, std::span<std::byte> sector) {
    std::memcpy(sector.data(), header.data(), header.size());
  };
}

void SessionHarness::go_to_settings(std::int32_t mode) {
  const Control radios[] = {Control::rec_mode_Photo, Control::rec_mode_Video,
                            Control::rec_mode_RawFile, Control::rec_mode_Audio};
  session->clicked(radios[mode]);
  view.person_selects(Control::idTableView, 0);
  session->clicked(Control::next_btn);
  view.type(mode == 0 ? Control::path : Control::path_Sig,
            text_from_utf8_lossy(destination.native()));
}

void SessionHarness::start_search(std::int32_t mode) {
  go_to_settings(mode);
  session->clicked(Control::next_btn);
  if (mode != 0) session->clicked(Control::next_btn);
  log.clear();
}

bool SessionHarness::finish_search() {
  if (!main_thread.run_until([this] { return !session->is_searching(); })) return false;
  controller.wait_for_worker();
  main_thread.run_all();
  return true;
}

std::vector<std::string> SessionHarness::happened() {
  std::vector<std::string> entries;
  std::string last_mode;
  for (const std::string& entry : view.history()) {
    if (is_repeated_by_the_timer(entry)) continue;
    if (entry.starts_with("text _Mode_label ")) {
      if (entry == last_mode) continue;
      last_mode = entry;
    }
    entries.push_back(entry);
  }
  log.clear();
  return entries;
}

}  // namespace norvo::test
