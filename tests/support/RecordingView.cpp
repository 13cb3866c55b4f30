#include "support/RecordingView.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <sstream>

namespace norvo::test {
namespace {

constexpr std::array on_every_screen{Control::help_info, Control::next_btn, Control::back_btn,
                                     Control::exit_btn,  Control::help_btn, Control::contact_btn};

std::string joined(const std::string& what, const Names& names) {
  std::string line = what;
  for (const std::string& name : names) line += " " + name;
  return line;
}

std::string number(double value) {
  std::ostringstream out;
  out.precision(15);
  out << value;
  return out.str();
}

std::string quoted(TextView text) {
  return "\"" + utf8_from_text(text) + "\"";
}

}  // namespace

std::string shown(const Names& names) {
  return joined("show", names);
}

std::string hidden(const Names& names) {
  return joined("hide", names);
}

Names operator+(Names left, const Names& right) {
  left.insert(right.begin(), right.end());
  return left;
}

RecordingView::RecordingView(EventLog& log) : log_(log) {
  for (const Control control : on_every_screen) at(control).hidden = false;
}

std::vector<std::string> RecordingView::history() const {
  std::vector<std::string> runs;
  std::string kind;
  Names names;
  const auto end_run = [&] {
    if (!names.empty()) runs.push_back(joined(kind, names));
    names.clear();
  };
  for (const std::string& entry : log_.entries()) {
    const std::string word = entry.substr(0, entry.find(' '));
    const bool visibility = word == "show" || word == "hide";
    if (!visibility || word != kind) end_run();
    if (visibility) {
      names.insert(entry.substr(word.size() + 1));
    } else {
      runs.push_back(entry);
    }
    kind = word;
  }
  end_run();
  return runs;
}

Names RecordingView::visible() const {
  Names names;
  for (std::size_t i = 0; i < control_count; ++i) {
    const auto control = static_cast<Control>(i);
    const bool everywhere =
        std::find(on_every_screen.begin(), on_every_screen.end(), control) != on_every_screen.end();
    if (!everywhere && !states_[i].hidden) names.emplace(control_name(control));
  }
  return names;
}

RecordingView::State& RecordingView::at(Control control) {
  EXPECT_EQ(std::this_thread::get_id(), owner_) << control_name(control) << " off the main thread";
  return states_.at(static_cast<std::size_t>(control));
}

const RecordingView::State& RecordingView::at(Control control) const {
  EXPECT_EQ(std::this_thread::get_id(), owner_) << control_name(control) << " off the main thread";
  return states_.at(static_cast<std::size_t>(control));
}

void RecordingView::write(const std::string& what, Control control, const std::string& detail) {
  log_.add(what + " " + std::string(control_name(control)) + (detail.empty() ? "" : " ") + detail);
}

void RecordingView::set_text(Control control, TextView text) {
  at(control).text = text;
  write("text", control, quoted(text));
}

void RecordingView::set_hidden(Control control, bool hidden) {
  if (at(control).hidden == hidden) return;
  at(control).hidden = hidden;
  write(hidden ? "hide" : "show", control);
}

void RecordingView::set_enabled(Control control, bool enabled) {
  if (at(control).enabled == enabled) return;
  at(control).enabled = enabled;
  write(enabled ? "enable" : "disable", control);
}

void RecordingView::set_on(Control control, bool on) {
  at(control).on = on;
  write(on ? "on" : "off", control);
}

void RecordingView::set_range(Control control, double minimum, double maximum) {
  State& state = at(control);
  state.minimum = minimum;
  state.maximum = maximum;
  state.value = std::clamp(state.value, minimum, maximum);
  write("range", control, number(minimum) + " to " + number(maximum));
}

// As written in the contract: a value outside the range is moved to its nearer end. A control that
// never got a range keeps every value.
void RecordingView::set_value(Control control, std::optional<double> value) {
  State& state = at(control);
  if (value && state.minimum < state.maximum) {
    value = std::clamp(*value, state.minimum, state.maximum);
  }
  state.value = value.value_or(0);
  write("value", control, value ? number(*value) : "indeterminate");
}

void RecordingView::focus(Control control) {
  static_cast<void>(at(control));
  write("focus", control);
}

void RecordingView::reload(Control control, bool scroll_to_last) {
  static_cast<void>(at(control));
  write("reload", control, scroll_to_last ? "to the last" : "");
  if (on_reload) on_reload(control);
}

void RecordingView::select_row(Control table, std::size_t row) {
  at(table).selected = row;
  write("select " + std::to_string(row) + " in", table);
}

void RecordingView::set_title(TextView title) {
  title_ = title;
  log_.add("title " + quoted(title));
}

}  // namespace norvo::test
