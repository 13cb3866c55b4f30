// How to reach support: addresses to copy, mails to write, pages to open. Main thread.
#pragma once

#include <QPushButton>
#include <array>
#include <functional>
#include <string_view>

#include "platform/qt/NoticeWindow.h"
#include "util/Text.h"

namespace norvo {

// What the dialog shows. An empty text leaves its row or button out.
struct ContactTexts {
  Text support_address;
  Text reseller_address;
  Text web_address;
  Text web_address_2;
  // The captions of the buttons that open pages.
  std::array<Text, 4> pages;
};

class ContactDialog : public NoticeWindow {
 public:
  // `clicked` hears the object name of each button that is clicked: "Copy_Email", "Copy_URL",
  // "Copy_URL_2", "Open_Support_Mail", "Open_Reseller_Mail", "Open_Page_1" to "Open_Page_4".
  ContactDialog(const ContactTexts& texts, std::function<void(std::string_view name)> clicked,
                QWidget* parent);

 private:
  void add_row(const QString& caption, const Text& address, const char* copy_button,
               const char* mail_button);
  QPushButton* make_button(const QString& caption, const char* name, const QString& says);
  void tell_clicks(const QPushButton& button, const char* name);

  std::function<void(std::string_view)> clicked_;
};

}  // namespace norvo
