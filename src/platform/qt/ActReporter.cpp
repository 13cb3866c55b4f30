#include "platform/qt/ActReporter.h"

#include <QAbstractButton>
#include <QLineEdit>

#include "platform/qt/ExactSlider.h"

namespace norvo {

void report_acts(const ControlTable& table, WizardEvents* const& events) {
  for (std::size_t index = 0; index < control_count; ++index) {
    const auto control = static_cast<Control>(index);
    QWidget* const widget = table.widget(control);
    const auto tell_changed = [&events, control] {
      if (events != nullptr) events->changed(control);
    };
    if (auto* button = qobject_cast<QAbstractButton*>(widget)) {
      const auto tell_clicked = [&events, control] {
        if (events != nullptr) events->clicked(control);
      };
      // A screen reader toggles a box or radio without a click.
      if (button->isCheckable()) {
        QObject::connect(button, &QAbstractButton::toggled, button, tell_clicked);
      } else {
        QObject::connect(button, &QAbstractButton::clicked, button, tell_clicked);
      }
    } else if (auto* slider = dynamic_cast<ExactSlider*>(widget)) {
      slider->on_moved(tell_changed);
    } else if (auto* field = qobject_cast<QLineEdit*>(widget)) {
      QObject::connect(field, &QLineEdit::textEdited, field, tell_changed);
    }
  }
}

}  // namespace norvo
