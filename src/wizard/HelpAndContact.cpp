#include "wizard/HelpAndContact.h"

#include <system_error>

#include "wizard/OpenOrTell.h"

namespace norvo {

void HelpAndContact::Help_btn() {
  std::error_code error;
  if (std::filesystem::exists(setting_.help_file, error)) {
    return open_or_tell(setting_.desktop, setting_.boxes, setting_.help_file);
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
    open_page_or_tell(setting_.desktop, setting_.boxes, address);
  };
  const auto write = [&](TextView mailto, TextView mailbox) {
    write_mail_or_tell(setting_.desktop, setting_.boxes, mailto, mailbox);
  };
  if (name == "Copy_Email") return copy(edition.support_address);
  if (name == "Copy_URL") return copy(edition.web_address);
  if (name == "Copy_URL_2") return copy(edition.web_address_2);
  if (name == "Open_Support_Mail") {
    return write(edition.support_with_content, edition.support_address);
  }
  if (name == "Open_Reseller_Mail") {
    return write(u"mailto:" + edition.reseller_address, edition.reseller_address);
  }
  if (name == "Open_Page_1") return open(edition.web_address);
  if (name == "Open_Page_2") return open(edition.web_address_2);
  if (name == "Open_Page_3") return open(edition.web_address_2 + u"/help");
  if (name == "Open_Page_4") return open(edition.web_address_2 + u"/order");
}

}  // namespace norvo
