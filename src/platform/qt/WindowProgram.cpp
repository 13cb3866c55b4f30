#include "platform/qt/WindowProgram.h"

#include <iostream>
#include <utility>

#include "platform/qt/WindowLists.h"

namespace norvo {

WindowProgram::WindowProgram(WindowSurroundings surroundings)
    : surroundings_(std::move(surroundings)),
      controller_(surroundings_.bundle_name, surroundings_.opener, operations_, operations_),
      drives_(*surroundings_.disk_utility, controller_.profile().USE_HARD_DISK),
      thumbnails_(main_thread_, {.decoder = surroundings_.decoder}),
      preview_pictures_(
          main_thread_,
          {.decoder = surroundings_.decoder, .processes = 1, .wants_verdicts = false}),
      window_(window_content(controller_, drives_, thumbnails_)),
      panel_(controller_.profile().APP_LONG_NAME, &window_),
      notices_(
          window_, contact_texts(), [this] { return session_.saved_notice(); },
          [this](std::string_view name) { session_.contact_clicked(name); }),
      preview_(preview_setting()),
      probe_(surroundings_.opener),
      permissions_(permissions_setting()),
      session_(session_setting()) {
  window_.connect_to(session_);
}

WindowProgram::~WindowProgram() {
  // A worker that waits for the main thread would otherwise wait for ever for who waits for it.
  shutdown();
  controller_.state().stop_now = 1;
  controller_.wait_for_worker();
}

ContactTexts WindowProgram::contact_texts() const {
  const EditionProfile& profile = controller_.profile();
  return {.support_address = profile.support_address,
          .reseller_address = profile.reseller_address,
          .web_address = profile.web_address,
          .web_address_2 = profile.web_address_2,
          .pages = {u"Norvo Recovery", u"This edition", u"Questions and answers", u"Orders"}};
}

PreviewBox::Setting WindowProgram::preview_setting() {
  return {.main_thread = main_thread_,
          .window = window_,
          .pictures = preview_pictures_,
          .player = surroundings_.player,
          .shown = [this] { session_.preview_shown(); }};
}

DevicePermissionsSetting WindowProgram::permissions_setting() {
  PrivacyReset* const privacy_reset = surroundings_.privacy_reset.get();
  return {.USE_HARD_DISK = controller_.profile().USE_HARD_DISK,
          .process_name = surroundings_.process_name,
          .bundle_identifier = surroundings_.bundle_identifier,
          .platform_help = surroundings_.permission_help,
          .probe = probe_,
          .privacy_reset = privacy_reset,
          .address_opener = privacy_reset == nullptr ? nullptr : &addresses_,
          .panel = panel_,
          .out = std::cout,
          .log = surroundings_.log};
}

WindowSession::Setting WindowProgram::session_setting() {
  return {.controller = controller_,
          .operations = operations_,
          .drives = drives_,
          .view = window_,
          .main_thread = main_thread_,
          .panel = panel_,
          .notices = notices_,
          .desktop = desktop_,
          .preview = preview_.pane(),
          .permissions = permissions_,
          .resource_folder = surroundings_.resource_folder,
          .raw_node = surroundings_.raw_node,
          .lies_on_device = surroundings_.lies_on_device,
          .searching_changed =
              [this](bool on) {
                surroundings_.sleep_guard->hold_off_sleep(on);
                thumbnails_.set_background(on);
              },
          .modal_session_is_open = [] { return QApplication::activeModalWidget() != nullptr; },
          .out = std::cout,
          .log = surroundings_.log};
}

void WindowProgram::show() {
  // The notice that drives are looked for is a part of the window. Nothing is drawn before it is:
  // no event is handled until then.
  window_.show();
  session_.set_up();
}

}  // namespace norvo
