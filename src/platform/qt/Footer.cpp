#include "platform/qt/Footer.h"

#include <QHBoxLayout>
#include <QPainter>
#include <QPushButton>
#include <QVBoxLayout>

#include "platform/qt/Labels.h"
#include "platform/qt/Theme.h"

namespace norvo {
namespace {

using namespace Qt::StringLiterals;

}  // namespace

Footer::Footer(ControlTable& controls) {
  const auto button = [&controls](Control control, const QString& caption, const QString& name,
                                  const QString& description, const char* look) {
    auto* made = controls.add(control, new QPushButton(caption), name, description);
    made->setProperty("look", QString::fromLatin1(look));
    made->setAutoDefault(false);
    return made;
  };
  auto* const guidance = controls.add(Control::help_info, new QuietLabel, u"What to do"_s);
  guidance->reserve_lines(2);
  auto* const exit =
      button(Control::exit_btn, u"E&xit"_s, u"Exit"_s, u"Ends the program"_s, "quiet");
  auto* const help = button(Control::help_btn, u"&Help"_s, u"Help"_s, u"Opens the help"_s, "quiet");
  auto* const contact = button(Control::contact_btn, u"&Contact Us"_s, u"Contact us"_s,
                               u"Shows how to reach support"_s, "quiet");
  auto* const back =
      button(Control::back_btn, u"&Back"_s, u"Back"_s, u"Goes to the step before"_s, "");
  auto* const next =
      button(Control::next_btn, u"&Next"_s, u"Next"_s, u"Goes to the next step"_s, "primary");

  auto* row = new QHBoxLayout;
  row->setSpacing(unit);
  row->addWidget(exit);
  row->addWidget(help);
  row->addWidget(contact);
  row->addStretch(1);
  row->addWidget(back);
  row->addWidget(next);
  auto* column = new QVBoxLayout(this);
  column->setContentsMargins(4 * unit, 12, 4 * unit, 2 * unit);
  column->setSpacing(12);
  column->addWidget(guidance);
  column->addLayout(row);
  setTabOrder(back, next);
}

void Footer::paintEvent(QPaintEvent* /*event*/) {
  QPainter painter(this);
  painter.fillRect(QRect(0, 0, width(), 1), Theme::current().border);
}

}  // namespace norvo
