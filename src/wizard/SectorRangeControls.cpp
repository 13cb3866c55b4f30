#include "wizard/SectorRangeControls.h"

#include <limits>

#include "util/Numbers.h"
#include "wizard/GuidanceTexts.h"
#include "wizard/Screens.h"

namespace norvo {
namespace {

struct Range {
  Control slider;
  Control field;
  Control minimum;
  Control maximum;
};

constexpr Range start{Control::Start_Slider, Control::Start_slider_val, Control::Start_Sec_Min_val,
                      Control::Start_Sec_Max_val};
constexpr Range end{Control::End_Slider, Control::End_slider_val, Control::End_Sec_Min_val,
                    Control::End_Sec_Max_val};

// The most that a slider writes.
constexpr double slider_limit = std::numeric_limits<std::int32_t>::max();

Text about_range(double sectors) {
  Text text(guidance::about_range);
  if (sectors > slider_limit) text += guidance::about_far_sectors;
  return text;
}

}  // namespace

void SectorRangeControls::Entire_Disk_Radio(SettingsPage page) {
  view_.set_text(Control::help_info, guidance::entire_disk);
  view_.set_on(on_page(Control::entire_disk_rd, page), true);
  view_.set_on(on_page(Control::sector_range_rd, page), false);
  show_disk_information(view_, page, true);
  show_range_controls(view_, page, false);
}

void SectorRangeControls::Sector_Range_Radio(SettingsPage page) {
  view_.set_text(Control::help_info, guidance::sector_range);
  view_.set_on(on_page(Control::entire_disk_rd, page), false);
  view_.set_on(on_page(Control::sector_range_rd, page), true);
  show_disk_information(view_, page, false);
  const Text sectors_val = view_.text(on_page(Control::end_sector_entire_val, page));
  reset_range(page, sectors_val);
  view_.set_text(on_page(Control::Sector_Range_Info, page),
                 about_range(floating_value(sectors_val)));
  show_range_controls(view_, page, true);
}

void SectorRangeControls::reset_range(SettingsPage page, TextView sectors_val) {
  const double sectors = floating_value(sectors_val);
  const auto reset = [&](const Range& range, double value, TextView text) {
    view_.set_range(on_page(range.slider, page), 0, sectors);
    view_.set_value(on_page(range.slider, page), value);
    view_.set_text(on_page(range.minimum, page), u"0");
    view_.set_text(on_page(range.maximum, page), sectors_val);
    view_.set_text(on_page(range.field, page), text);
  };
  reset(start, 0, u"0");
  reset(end, sectors, sectors_val);
}

void SectorRangeControls::slider_to_text(Control slider, Control field, SettingsPage page) {
  const double value = view_.value(on_page(slider, page));
  const auto number = static_cast<std::uint64_t>(value < 0              ? 0
                                                 : value > slider_limit ? slider_limit
                                                                        : value);
  view_.set_text(on_page(field, page), decimal(number));
}

void SectorRangeControls::DO_Start_slider(SettingsPage page) {
  slider_to_text(start.slider, start.field, page);
}

void SectorRangeControls::DO_End_slider(SettingsPage page) {
  slider_to_text(end.slider, end.field, page);
}

void SectorRangeControls::controlTextDidChange(Control field) {
  for (const SettingsPage page : {SettingsPage::photo, SettingsPage::signature}) {
    for (const Range& range : {start, end}) {
      if (on_page(range.field, page) != field) continue;
      const double typed = floating_value(view_.text(field));
      if (typed > floating_value(view_.text(Control::sectors_val))) return;
      view_.set_value(on_page(range.slider, page), typed);
    }
  }
}

void SectorRangeControls::show_guidance(SettingsPage page) {
  const bool entire_disk = view_.is_on(on_page(Control::entire_disk_rd, page));
  const bool sector_range = view_.is_on(on_page(Control::sector_range_rd, page));
  if (entire_disk == sector_range) return;
  view_.set_text(Control::help_info, entire_disk ? guidance::entire_disk : guidance::sector_range);
}

}  // namespace norvo
