// A window without a window: keeps the state of every control and writes down what is done to it.
//
// A freshly made one shows what stands on every screen, as the real one does: the help line and the
// buttons Next, Back, Exit, Help and Contact. All else is hidden, everything is enabled.
#pragma once

#include <array>
#include <functional>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <thread>
#include <vector>

#include "support/EventLog.h"
#include "wizard/WizardView.h"

namespace norvo::test {

using Names = std::set<std::string>;

// "show _a _b" or "hide _a _b", as the view writes down a run of controls shown or hidden.
std::string shown(const Names& names);
std::string hidden(const Names& names);

Names operator+(Names left, const Names& right);

class RecordingView final : public WizardView {
 public:
  explicit RecordingView(EventLog& log);

  // The log with each run of controls that were shown, or hidden, as one sorted entry. Only what
  // changed is there: hiding a hidden control leaves no trace.
  std::vector<std::string> history() const;

  // The names of all visible controls, without those that stand on every screen.
  Names visible() const;

  bool is_hidden(Control control) const { return at(control).hidden; }
  bool is_enabled(Control control) const { return at(control).enabled; }
  double minimum(Control control) const { return at(control).minimum; }
  double maximum(Control control) const { return at(control).maximum; }
  const Text& title() const { return title_; }

  // Called inside every reload.
  std::function<void(Control)> on_reload;

  // What the person does.
  void person_selects(Control table, std::optional<std::size_t> row) { at(table).selected = row; }
  void type(Control field, TextView text) { at(field).text = text; }
  void turn(Control box, bool on) { at(box).on = on; }
  void move(Control slider, double value) { at(slider).value = value; }

  void set_text(Control control, TextView text) override;
  Text text(Control control) const override { return at(control).text; }
  void set_hidden(Control control, bool hidden) override;
  void set_enabled(Control control, bool enabled) override;
  void set_on(Control control, bool on) override;
  bool is_on(Control control) const override { return at(control).on; }
  void set_range(Control control, double minimum, double maximum) override;
  void set_value(Control control, std::optional<double> value) override;
  double value(Control control) const override { return at(control).value; }
  void focus(Control control) override;
  void reload(Control control, bool scroll_to_last) override;
  std::optional<std::size_t> selected_row(Control table) const override {
    return at(table).selected;
  }
  void select_row(Control table, std::size_t row) override;
  void set_title(TextView title) override;

 private:
  struct State {
    Text text;
    bool hidden = true;
    bool enabled = true;
    bool on = false;
    double minimum = 0;
    double maximum = 0;
    double value = 0;
    std::optional<std::size_t> selected;
  };
  State& at(Control control);
  const State& at(Control control) const;
  void write(const std::string& what, Control control, const std::string& detail = {});

  EventLog& log_;
  const std::thread::id owner_ = std::this_thread::get_id();
  std::array<State, control_count> states_;
  Text title_;
};

}  // namespace norvo::test
