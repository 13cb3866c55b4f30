#include "platform/qt/SettingsScreen.h"

#include <QApplication>
#include <QCheckBox>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>
#include <array>

#include "platform/qt/Labels.h"
#include "platform/qt/SectorRangePanel.h"
#include "platform/qt/Theme.h"
#include "platform/qt/TitledBox.h"

namespace norvo {
namespace {

using namespace Qt::StringLiterals;

struct DriveField {
  Control caption;
  Control value;
  QString title;
};

QRadioButton* free_radio(const QString& title) {
  auto* radio = new QRadioButton(title);
  radio->setAutoExclusive(false);
  return radio;
}

}  // namespace

SettingsScreen::SettingsScreen(ControlTable& controls, SettingsPage page) : page_(page) {
  setFrameShape(QFrame::NoFrame);
  setWidgetResizable(true);
  setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  setFocusPolicy(Qt::NoFocus);
  auto* content = new QWidget;
  auto* column = new QVBoxLayout(content);
  column->setContentsMargins(0, 0, 0, 0);
  column->setSpacing(12);
  column->addWidget(make_criteria(controls));
  column->addWidget(make_drive(controls));
  column->addWidget(make_destination(controls));
  if (page == SettingsPage::photo) column->addWidget(make_thorough(controls));
  column->addStretch(1);
  setWidget(content);
  // By itself the area follows the Tab key only while that stays within it. The focus also comes
  // from the footer, from a letter of the keyboard, and from a check that refuses a value.
  connect(qApp, &QApplication::focusChanged, this, [this](QWidget* /*old*/, QWidget* now) {
    if (now != nullptr && widget()->isAncestorOf(now)) ensureWidgetVisible(now, 0, 2 * unit);
  });
}

QWidget* SettingsScreen::make_criteria(ControlTable& controls) {
  TitledBox* const box = controls.add(named(Control::Criteria_Box),
                                      new TitledBox(u"What to search"_s), u"What to search"_s);
  auto* const entire = controls.add(named(Control::entire_disk_rd), free_radio(u"&Entire disk"_s),
                                    u"Entire disk"_s, u"Searches the whole drive"_s);
  auto* const range = controls.add(named(Control::sector_range_rd), free_radio(u"Sector &range"_s),
                                   u"Sector range"_s, u"Searches only a part of the drive"_s);
  auto* row = new QHBoxLayout;
  row->setSpacing(4 * unit);
  row->addWidget(entire);
  row->addWidget(range);
  row->addStretch(1);
  box->content().addLayout(row);
  return box;
}

QWidget* SettingsScreen::make_drive(ControlTable& controls) {
  TitledBox* const box = controls.add(named(Control::Disk_Info_Box),
                                      new TitledBox(u"Selected drive"_s), u"Selected drive"_s);
  const std::array<DriveField, 6> fields{{
      {Control::disk, Control::disk_val, u"Disk"_s},
      {Control::vol_name, Control::vol_name_val, u"Volume"_s},
      {Control::file_system, Control::file_system_val, u"File system"_s},
      {Control::size, Control::size_val, u"Size"_s},
      {Control::start_sector_entire, Control::start_sector_entire_val, u"Start sector"_s},
      {Control::end_sector_entire, Control::end_sector_entire_val, u"End sector"_s},
  }};
  auto* information = new QWidget;
  auto* grid = new QGridLayout(information);
  grid->setContentsMargins(0, 0, 0, 0);
  grid->setHorizontalSpacing(3 * unit);
  grid->setVerticalSpacing(2);
  for (int i = 0; i < static_cast<int>(fields.size()); ++i) {
    const DriveField& field = fields[static_cast<std::size_t>(i)];
    const int row = i / 3 * 3;
    grid->addWidget(controls.add(named(field.caption), new QuietLabel(field.title), field.title),
                    row, i % 3);
    grid->addWidget(controls.add(named(field.value), new ElidedLabel, field.title), row + 1, i % 3);
    grid->setColumnStretch(i % 3, 1);
  }
  grid->setRowMinimumHeight(2, unit);
  controls.add_container(information);
  auto* range = new SectorRangePanel(controls, page_);
  controls.add_container(range);
  box->content().addWidget(information);
  box->content().addWidget(range);
  return box;
}

QWidget* SettingsScreen::make_destination(ControlTable& controls) {
  TitledBox* const box =
      controls.add(named(Control::Destination_Box), new TitledBox(u"Where to save what is found"_s),
                   u"Where to save what is found"_s);
  auto* const field = controls.add(named(Control::path), new QLineEdit, u"Destination folder"_s,
                                   u"A folder on another drive than the one that is searched"_s);
  field->setPlaceholderText(u"A folder on another drive"_s);
  auto* const label =
      controls.add(named(Control::path_label), new QLabel(u"&Folder"_s), u"Folder"_s);
  label->setBuddy(field);
  auto* const browse = controls.add(named(Control::browse_path), new QPushButton(u"Bro&wse…"_s),
                                    u"Browse"_s, u"Chooses the destination folder"_s);
  auto* const hint = controls.add(named(Control::destination_hint), new QuietLabel,
                                  u"About the destination folder"_s);
  auto* row = new QHBoxLayout;
  row->setSpacing(unit);
  row->addWidget(label);
  row->addWidget(field, 1);
  row->addWidget(browse);
  box->content().addLayout(row);
  box->content().addWidget(hint);
  return box;
}

QWidget* SettingsScreen::make_thorough(ControlTable& controls) {
  auto* const box = new TitledBox({});
  auto* const tick = controls.add(Control::Thro_Mode_Chk, new QCheckBox(u"&Thorough search"_s),
                                  u"Thorough search"_s, u"A second search follows the first"_s);
  auto* const label = controls.add(Control::Thro_Mode_Chk_Label, new QuietLabel(u"Recommended"_s),
                                   u"Thorough search"_s);
  auto* const about = controls.add(
      Control::Thro_Mode_Info,
      new QuietLabel(u"After the first search the drive is searched a second time for further "
                     u"types of pictures. This takes about twice as long."_s),
      u"About the thorough search"_s);
  label->setWordWrap(false);
  auto* row = new QHBoxLayout;
  row->setSpacing(unit);
  row->addWidget(tick);
  row->addWidget(label);
  row->addStretch(1);
  box->content().addLayout(row);
  box->content().addWidget(about);
  controls.add_container(box);
  return box;
}

}  // namespace norvo
