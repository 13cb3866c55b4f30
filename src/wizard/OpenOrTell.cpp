#include "wizard/OpenOrTell.h"

namespace norvo {
namespace {

constexpr TextView open_yourself =
    u"No program could be started to open this. Please open it yourself:\n\n";
constexpr TextView write_yourself =
    u"No mail program could be started. Please write to this address yourself:\n\n";

void tell(MessageBoxes& boxes, TextView advice, TextView place) {
  boxes.Show_MessageBox(Text(advice) + displayable(place));
}

}  // namespace

void open_or_tell(Desktop& desktop, MessageBoxes& boxes, const std::filesystem::path& path) {
  if (desktop.open_path(path)) return;
  tell(boxes, open_yourself, text_from_utf8_lossy(path.native()));
}

void open_page_or_tell(Desktop& desktop, MessageBoxes& boxes, TextView address) {
  if (!desktop.open_address(address)) tell(boxes, open_yourself, address);
}

void write_mail_or_tell(Desktop& desktop, MessageBoxes& boxes, TextView mailto, TextView mailbox) {
  if (!desktop.open_address(mailto)) tell(boxes, write_yourself, mailbox);
}

}  // namespace norvo
