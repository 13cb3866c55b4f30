#include "platform/qt/SectorRangePanel.h"

#include <QGridLayout>
#include <QHBoxLayout>
#include <QLineEdit>
#include <QVBoxLayout>

#include "platform/qt/ExactSlider.h"
#include "platform/qt/Labels.h"
#include "platform/qt/QtText.h"
#include "platform/qt/Theme.h"
#include "platform/qt/TitledBox.h"
#include "wizard/GuidanceTexts.h"

namespace norvo {
namespace {

using namespace Qt::StringLiterals;

// A caption and its value beside each other.
QHBoxLayout* pair(QWidget* caption, QWidget* value) {
  auto* row = new QHBoxLayout;
  row->setSpacing(unit / 2);
  row->addWidget(caption);
  row->addWidget(value);
  row->addStretch(1);
  return row;
}

QLabel* caption_label(const QString& text) {
  auto* label = new QuietLabel(text);
  label->setWordWrap(false);
  return label;
}

}  // namespace

SectorRangePanel::SectorRangePanel(ControlTable& controls, SettingsPage page) {
  auto* column = new QVBoxLayout(this);
  column->setContentsMargins(0, 0, 0, 0);
  column->setSpacing(12);
  column->addWidget(controls.add(on_page(Control::Sector_Range_Info, page),
                                 new QuietLabel(to_qt(guidance::about_range)),
                                 u"About the sector range"_s));
  auto* row = new QHBoxLayout;
  row->setSpacing(3 * unit);
  row->addWidget(
      make_end(controls, page,
               {Control::Start_Sec_Box, Control::Start_Sec_Min, Control::Start_Sec_Min_val,
                Control::Start_Sec_Max, Control::Start_Sec_Max_val, Control::Start_Sec_curr,
                Control::Start_slider_val, Control::Start_Slider, u"Start"_s, u"Start sector"_s,
                u"&Start sector"_s}));
  row->addWidget(make_end(
      controls, page,
      {Control::End_Sec_Box, Control::End_Sec_Min, Control::End_Sec_Min_val, Control::End_Sec_Max,
       Control::End_Sec_Max_val, Control::End_Sec_curr, Control::End_slider_val,
       Control::End_Slider, u"End"_s, u"End sector"_s, u"En&d sector"_s}));
  column->addLayout(row);
}

QWidget* SectorRangePanel::make_end(ControlTable& controls, SettingsPage page, const End& end) {
  TitledBox* const box = controls.add(on_page(end.box, page),
                                      new TitledBox(end.title, TitledBox::Kind::flat), end.name);
  auto* const field = controls.add(on_page(end.field, page), new QLineEdit, end.name,
                                   u"Number of a sector, digits only"_s);
  field->setInputMethodHints(Qt::ImhDigitsOnly);
  field->setAlignment(Qt::AlignRight);
  auto* const caption = controls.add(on_page(end.current, page), new QLabel(end.caption), end.name);
  caption->setBuddy(field);
  auto* const slider = controls.add(on_page(end.slider, page), new ExactSlider,
                                    end.name + u" slider"_s, u"Moves with the arrow keys"_s);
  const auto add_label = [&controls, page](Control control, QLabel* label, const QString& name) {
    return controls.add(on_page(control, page), label, name);
  };

  auto* grid = new QGridLayout;
  grid->setHorizontalSpacing(unit);
  grid->setVerticalSpacing(unit);
  grid->addWidget(caption, 0, 0);
  grid->addWidget(field, 0, 1, 1, 2);
  grid->addWidget(slider, 1, 0, 1, 3);
  grid->addLayout(pair(add_label(end.minimum, caption_label(u"First"_s), u"First"_s),
                       add_label(end.minimum_value, new ElidedLabel, u"First sector"_s)),
                  2, 0);
  grid->addLayout(pair(add_label(end.maximum, caption_label(u"Last"_s), u"Last"_s),
                       add_label(end.maximum_value, new ElidedLabel, u"Last sector"_s)),
                  2, 2, Qt::AlignRight);
  grid->setColumnStretch(1, 1);
  box->content().addLayout(grid);
  return box;
}

}  // namespace norvo
