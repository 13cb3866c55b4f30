#include "platform/qt/ControlTable.h"

#include <QAbstractButton>
#include <QAccessible>
#include <QLabel>
#include <QLineEdit>
#include <QSignalBlocker>
#include <algorithm>
#include <utility>

#include "platform/qt/ExactValue.h"
#include "platform/qt/QtText.h"
#include "platform/qt/TitledBox.h"

namespace norvo {
namespace {

using namespace Qt::StringLiterals;

std::size_t index_of(Control control) {
  return static_cast<std::size_t>(control);
}

// The letter behind a caption's mark for the keyboard, or a null character.
QChar mnemonic_of(const QString& caption) {
  for (qsizetype i = 0; i + 1 < caption.size(); ++i) {
    if (caption[i] != u'&') continue;
    if (caption[i + 1] != u'&') return caption[i + 1];
    ++i;
  }
  return {};
}

QString without_mnemonic(const QString& caption) {
  QString plain;
  for (qsizetype i = 0; i < caption.size(); ++i) {
    if (caption[i] == u'&' && i + 1 < caption.size()) ++i;
    plain += caption[i];
  }
  return plain;
}

// `title` as a caption that keeps the letter `mnemonic` if it has that letter.
QString with_mnemonic(const QString& title, QChar mnemonic) {
  const qsizetype place = mnemonic.isNull() ? -1 : title.indexOf(mnemonic, 0, Qt::CaseInsensitive);
  QString caption;
  for (qsizetype i = 0; i < title.size(); ++i) {
    if (i == place || title[i] == u'&') caption += u'&';
    caption += title[i];
  }
  return caption;
}

// What a person must hear although the focus is elsewhere. Not figures: they change many times a
// second.
bool is_announced(Control control) {
  switch (control) {
    case Control::help_info:
    case Control::destination_hint:
    case Control::destination_hint_Sig:
    case Control::Mode_label:
    case Control::ClearThumbnail_Label:
      return true;
    default:
      return false;
  }
}

}  // namespace

void alert_screen_readers(QWidget& widget) {
  QAccessibleEvent event(&widget, QAccessible::Alert);
  QAccessible::updateAccessibility(&event);
}

void ControlTable::enter(Control control, QWidget& widget, const QString& name,
                         const QString& description) {
  const std::string_view object_name = control_name(control);
  widget.setObjectName(
      QString::fromUtf8(object_name.data(), static_cast<qsizetype>(object_name.size())));
  widget.setAccessibleName(name);
  widget.setAccessibleDescription(description);
  widget.setHidden(true);
  widgets_.at(index_of(control)) = &widget;
  names_.at(index_of(control)) = name;
  if (auto* const label = qobject_cast<QLabel*>(&widget)) tell_text(control, *label);
}

// A label with an accessible name tells a screen reader nothing else, so the name holds the text. A
// caption is its own name.
void ControlTable::tell_text(Control control, QLabel& label) const {
  const QString& name = names_.at(index_of(control));
  const QString text = label.text().trimmed();
  const bool says_more = !text.isEmpty() && without_mnemonic(text) != name;
  label.setAccessibleName(says_more ? name + u": "_s + text : name);
}

void ControlTable::announce(Control control, QWidget& widget) const {
  const auto* const label = qobject_cast<QLabel*>(&widget);
  if (label == nullptr || !is_announced(control) || !label->isVisible()) return;
  if (!label->text().trimmed().isEmpty()) announce_(widget);
}

void ControlTable::add_container(QWidget* container, std::function<void(bool)> on_change) {
  container->setHidden(true);
  containers_.push_back({container, std::move(on_change)});
}

QWidget* ControlTable::widget(Control control) const {
  return widgets_.at(index_of(control));
}

void ControlTable::set_text(Control control, TextView text) {
  QWidget* const found = widget(control);
  const QString shown = to_qt(text);
  if (auto* label = qobject_cast<QLabel*>(found)) {
    const bool changes = label->text() != shown;
    label->setText(shown);
    label->updateGeometry();
    if (!changes) return;
    tell_text(control, *label);
    announce(control, *label);
  } else if (auto* button = qobject_cast<QAbstractButton*>(found)) {
    button->setText(with_mnemonic(shown, mnemonic_of(button->text())));
  } else if (auto* field = qobject_cast<QLineEdit*>(found)) {
    const QSignalBlocker quiet(field);
    // A field that already reads so keeps the person's cursor.
    if (field->text() != shown) field->setText(shown);
  } else if (auto* box = dynamic_cast<TitledBox*>(found)) {
    box->set_title(shown);
  }
}

Text ControlTable::text(Control control) const {
  const QWidget* const found = widget(control);
  if (const auto* label = qobject_cast<const QLabel*>(found)) return to_text(label->text());
  if (const auto* button = qobject_cast<const QAbstractButton*>(found)) {
    return to_text(without_mnemonic(button->text()));
  }
  if (const auto* field = qobject_cast<const QLineEdit*>(found)) return to_text(field->text());
  if (const auto* box = dynamic_cast<const TitledBox*>(found)) return to_text(box->title());
  return {};
}

void ControlTable::set_hidden(Control control, bool hidden) {
  QWidget* const found = widget(control);
  if (found == nullptr) return;
  const bool was_visible = found->isVisible();
  found->setHidden(hidden);
  for (const Container& container : containers_) {
    if (container.widget->isAncestorOf(found)) update(container);
  }
  if (!was_visible) announce(control, *found);
}

void ControlTable::update(const Container& container) const {
  const bool visible = std::ranges::any_of(widgets_, [&container](const QWidget* one) {
    return one != nullptr && container.widget->isAncestorOf(one) && !one->isHidden();
  });
  if (visible != container.widget->isHidden()) return;
  container.widget->setHidden(!visible);
  if (container.on_change) container.on_change(visible);
}

void ControlTable::set_enabled(Control control, bool enabled) {
  if (QWidget* const found = widget(control)) found->setEnabled(enabled);
}

void ControlTable::set_on(Control control, bool on) {
  auto* const button = qobject_cast<QAbstractButton*>(widget(control));
  if (button == nullptr || !button->isCheckable()) return;
  // Only what the person does is told.
  const QSignalBlocker quiet(button);
  button->setChecked(on);
}

bool ControlTable::is_on(Control control) const {
  const auto* const button = qobject_cast<const QAbstractButton*>(widget(control));
  return button != nullptr && button->isChecked();
}

void ControlTable::set_range(Control control, double minimum, double maximum) {
  if (auto* exact = dynamic_cast<ExactValue*>(widget(control))) exact->set_range(minimum, maximum);
}

void ControlTable::set_value(Control control, std::optional<double> value) {
  if (auto* exact = dynamic_cast<ExactValue*>(widget(control))) exact->set_value(value);
}

double ControlTable::value(Control control) const {
  const auto* const exact = dynamic_cast<const ExactValue*>(widget(control));
  return exact == nullptr ? 0 : exact->value();
}

void ControlTable::focus(Control control) {
  if (QWidget* const found = widget(control)) found->setFocus(Qt::OtherFocusReason);
}

}  // namespace norvo
