#include "platform/qt/ContactDialog.h"

#include <QGridLayout>
#include <QHBoxLayout>
#include <algorithm>
#include <utility>

#include "platform/qt/Labels.h"
#include "platform/qt/MailLink.h"
#include "platform/qt/QtText.h"
#include "platform/qt/Theme.h"

namespace norvo {
namespace {

using namespace Qt::StringLiterals;

}  // namespace

ContactDialog::ContactDialog(const ContactTexts& texts,
                             std::function<void(std::string_view)> clicked, QWidget* parent)
    : NoticeWindow({.object_name = u"Help_Support"_s,
                    .icon = u"mail"_s,
                    .title = u"Contact us"_s,
                    .text = u"Write to us when something is not clear or does not work. Tell us "
                            u"which card or drive it is and what has happened."_s,
                    .button_name = u"OK_Btn"_s,
                    .button_caption = u"&Close"_s},
                   parent),
      clicked_(std::move(clicked)) {
  add_row(u"Support"_s, texts.support_address, "Copy_Email", "Open_Support_Mail");
  add_row(u"Web"_s, texts.web_address, "Copy_URL", nullptr);
  add_row(u"This edition"_s, texts.web_address_2, "Copy_URL_2", nullptr);
  add_row(u"Resellers"_s, texts.reseller_address, nullptr, "Open_Reseller_Mail");
  auto* pages = new QGridLayout;
  pages->setSpacing(unit);
  int place = 0;
  for (std::size_t i = 0; i < texts.pages.size(); ++i) {
    if (texts.pages[i].empty()) continue;
    const QString caption = to_qt(texts.pages[i]);
    const std::string name = "Open_Page_" + std::to_string(i + 1);
    pages->addWidget(make_button(caption, name.c_str(), u"Opens a web page: "_s + caption),
                     place / 2, place % 2);
    ++place;
  }
  more().addSpacing(unit);
  more().addLayout(pages);
}

QPushButton* ContactDialog::make_button(const QString& caption, const char* name,
                                        const QString& says) {
  auto* button = new QPushButton(caption);
  button->setObjectName(QString::fromLatin1(name));
  button->setAccessibleName(says);
  button->setAutoDefault(false);
  tell_clicks(*button, name);
  return button;
}

void ContactDialog::tell_clicks(const QPushButton& button, const char* name) {
  connect(&button, &QPushButton::clicked, this,
          [this, told = std::string(name)] { clicked_(told); });
}

void ContactDialog::add_row(const QString& caption, const Text& address, const char* copy_button,
                            const char* mail_button) {
  if (address.empty()) return;
  auto* texts = new QVBoxLayout;
  texts->setSpacing(0);
  texts->addWidget(new QuietLabel(caption));
  if (mail_button != nullptr) {
    auto* link = new MailLink(address, QString::fromLatin1(mail_button));
    tell_clicks(*link, mail_button);
    texts->addWidget(link, 0, Qt::AlignLeft);
  } else {
    auto* shown = new ElidedLabel;
    shown->setText(to_qt(address));
    texts->addWidget(shown);
  }
  auto* row = new QHBoxLayout;
  row->setSpacing(unit);
  row->addLayout(texts, 1);
  if (copy_button != nullptr) {
    row->addWidget(make_button(u"Copy"_s, copy_button, u"Copy "_s + to_qt(address)));
  }
  more().addLayout(row);
}

}  // namespace norvo
