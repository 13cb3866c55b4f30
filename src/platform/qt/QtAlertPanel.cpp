#include "platform/qt/QtAlertPanel.h"

#include <QApplication>
#include <QLabel>
#include <QLayout>
#include <QMessageBox>
#include <QPushButton>
#include <QStyle>
#include <algorithm>
#include <array>
#include <utility>

#include "platform/qt/Icons.h"
#include "platform/qt/QtText.h"
#include "platform/qt/Theme.h"

namespace norvo {
namespace {

using namespace Qt::StringLiterals;

constexpr int least_text_width = 35 * unit;
constexpr int most_text_width = 60 * unit;

// The text has the room for its longest line, or for as much of it as is still read well; the box
// breaks it where that is not enough.
void make_room_for_text(QLabel& label) {
  label.ensurePolished();
  const QRect endless(0, 0, QWIDGETSIZE_MAX, QWIDGETSIZE_MAX);
  const int needed = label.fontMetrics().boundingRect(endless, Qt::AlignLeft, label.text()).width();
  label.setMinimumWidth(std::clamp(needed + 2, least_text_width, most_text_width));
}

// The text keeps its line breaks in front, but they take no room; a short text stands beside the
// middle of the icon.
void lift_text(QLabel& label) {
  const QString text = label.text();
  qsizetype breaks = 0;
  while (breaks < text.size() && text[breaks] == u'\n') ++breaks;
  const int line = label.fontMetrics().lineSpacing();
  const int shown = line * static_cast<int>(text.count(u'\n') - breaks + 1);
  const int top = std::max(0, (message_icon_size - shown) / 2) - static_cast<int>(breaks) * line;
  label.setAlignment(Qt::AlignLeft | Qt::AlignTop);
  // Else a margin below zero would count for the label's size and not for the text's place in it.
  label.setAttribute(Qt::WA_ContentsMarginsRespectsSafeArea, false);
  label.setContentsMargins(0, top, 0, 0);
}

}  // namespace

AlertAnswer QtAlertPanel::run(const Alert& alert) {
  QWidget* const active = QApplication::activeWindow();
  QMessageBox box(active != nullptr ? active : window_);
  box.setObjectName(u"alert"_s);
  box.setWindowTitle(to_qt(title_));
  box.setTextFormat(Qt::PlainText);
  box.setText(to_qt(alert.message));
  box.setInformativeText(to_qt(alert.informative_text));
  const bool asks = !alert.other_button.empty() || !alert.alternate_button.empty();
  box.setIconPixmap(icon_pixmap(asks ? u"question"_s : u"information"_s, message_icon_size,
                                Theme::current().accent, box.devicePixelRatioF()));
  const std::array<std::pair<const Text*, QMessageBox::ButtonRole>, 3> wanted{{
      {&alert.default_button, QMessageBox::AcceptRole},
      {&alert.alternate_button, QMessageBox::ActionRole},
      {&alert.other_button, QMessageBox::RejectRole},
  }};
  std::array<QPushButton*, 3> buttons{};
  for (std::size_t i = 0; i < wanted.size(); ++i) {
    if (!wanted[i].first->empty()) {
      buttons[i] = box.addButton(to_qt(*wanted[i].first), wanted[i].second);
    }
  }
  const auto [default_button, alternate, other] = buttons;
  if (default_button != nullptr) {
    default_button->setProperty("look", u"primary"_s);
    // The box has given its buttons their looks already.
    default_button->style()->polish(default_button);
    box.setDefaultButton(default_button);
  }
  box.setEscapeButton(other != nullptr ? other : default_button);
  if (auto* const label = box.findChild<QLabel*>(u"qt_msgbox_label"_s)) {
    make_room_for_text(*label);
    lift_text(*label);
  }
  box.layout()->setContentsMargins(3 * unit, 3 * unit, 3 * unit, 2 * unit);
  box.exec();
  const QAbstractButton* const clicked = box.clickedButton();
  if (clicked != nullptr && clicked == alternate) return AlertAnswer::alternate_button;
  if (clicked != nullptr && clicked == default_button) return AlertAnswer::default_button;
  return other != nullptr ? AlertAnswer::other_button : AlertAnswer::default_button;
}

}  // namespace norvo
