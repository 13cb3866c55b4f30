// Which widget stands for which control, and the operations on a control by its widget's kind.
//
// Every control that is added carries its exact name as object name and starts hidden. Containers
// follow their controls: one is visible exactly while a control inside it is not hidden. Main
// thread; the widgets belong to their parents and outlive the table's use.
#pragma once

#include <QLabel>
#include <QString>
#include <QWidget>
#include <array>
#include <functional>
#include <optional>
#include <utility>
#include <vector>

#include "util/Text.h"
#include "wizard/Controls.h"

namespace norvo {

// Tells screen readers that `widget` has something to say, wherever the focus is.
void alert_screen_readers(QWidget& widget);

class ControlTable {
 public:
  // `announce` is called with each widget that has to be heard at once.
  explicit ControlTable(std::function<void(QWidget&)> announce = alert_screen_readers)
      : announce_(std::move(announce)) {}

  // Returns `widget`. The accessible name is what a screen reader says for it; for a label that
  // shows another text than its name it is followed by that text.
  template <class Widget>
  Widget* add(Control control, Widget* widget, const QString& accessible_name,
              const QString& description = {}) {
    enter(control, *widget, accessible_name, description);
    return widget;
  }

  // Shown and hidden with the controls below it. `on_change` hears of each change.
  void add_container(QWidget* container, std::function<void(bool visible)> on_change = {});

  // nullptr for a control that was not added.
  QWidget* widget(Control control) const;

  // What WizardView says of each. What matters at once, guidance and warnings, is announced to
  // screen readers when it comes to be seen or changes.
  void set_text(Control control, TextView text);
  Text text(Control control) const;
  void set_hidden(Control control, bool hidden);
  void set_enabled(Control control, bool enabled);
  void set_on(Control control, bool on);
  bool is_on(Control control) const;
  void set_range(Control control, double minimum, double maximum);
  void set_value(Control control, std::optional<double> value);
  double value(Control control) const;
  void focus(Control control);

 private:
  struct Container {
    QWidget* widget;
    std::function<void(bool)> on_change;
  };

  void enter(Control control, QWidget& widget, const QString& name, const QString& description);
  void update(const Container& container) const;
  void tell_text(Control control, QLabel& label) const;
  void announce(Control control, QWidget& widget) const;

  std::function<void(QWidget&)> announce_;
  std::array<QWidget*, control_count> widgets_{};
  std::array<QString, control_count> names_;  // without what the widgets show
  std::vector<Container> containers_;
};

}  // namespace norvo
