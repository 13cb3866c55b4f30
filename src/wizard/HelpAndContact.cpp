#include "wizard/HelpAndContact.h"

#include <system_error>

namespace norvo {

void HelpAndContact::Help_btn() {
  std::error_code error;
  if (std::filesystem::exists(setting_.help_file, error)) {
    static_cast<void>(setting_.desktop.open_path(setting_.help_file));
    return;
  }
  static_cast<void>(show_msg(setting_.panel, u"\nHelp file does not exist!"));
}

void HelpAndContact::copy(TextView text) {
  setting_.desktop.copy_text(text);
  setting_.boxes.Show_MessageBox(u"Text copied successfully.");
}

void HelpAndContact::contact_clicked(std::string_view name) {
  const EditionPresentation& edition = setting_.edition;
  const auto open = [&](TextView address) {
    static_cast<void>(setting_.desktop.open_address(address));
  };
  if (name == "Copy_Email") return copy(edition.support_address);
  if (name == "Copy_URL") return copy(edition.web_address);
  if (name == "Copy_URL_2") return copy(edition.web_address_2);
  if (name == "Open_Support_Mail") return open(edition.support_with_content);
  if (name == "Open_Reseller_Mail") return open(u"mailto:" + edition.reseller_address);
  if (name == "Open_Page_1") return open(edition.web_address);
  if (name == "Open_Page_2") return open(edition.web_address_2);
  if (name == "Open_Page_3") return open(edition.web_address_2 + u"/help");
  if (name == "Open_Page_4") return open(edition.web_address_2 + u"/order");
}

}  // namespace norvo
