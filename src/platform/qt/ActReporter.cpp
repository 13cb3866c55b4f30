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
      QObject::connect(button, &QAbstractButton::clicked, button, [&events, control] {
        if (events != nullptr) events->clicked(control);
      });
    } else if (auto* slider = dynamic_cast<ExactSlider*>(widget)) {
      slider->on_moved(tell_changed);
    } else if (auto* field = qobject_cast<QLineEdit*>(widget)) {
      QObject::connect(field, &QLineEdit::textEdited, field, tell_changed);
    }
  }
}

}  // namespace norvo
