#include "platform/qt/CheckListScreen.h"

#include <QCheckBox>
#include <QHBoxLayout>
#include <QVBoxLayout>

#include "platform/qt/EmptyNote.h"
#include "platform/qt/Theme.h"

namespace norvo {
namespace {

using namespace Qt::StringLiterals;

std::vector<TableColumn> type_columns() {
  return {{"State", u"Search for it"_s, TableColumn::Kind::box},
          {"Extension", u"Extension"_s},
          {"Description", u"Description"_s},
          {"Thoro", u"Thorough only"_s}};
}

}  // namespace

CheckListScreen::CheckListScreen(ControlTable& controls, TableSource types) {
  table_ = controls.add(
      Control::idCheckTableView,
      new TableView(std::make_unique<SourceTableModel>(std::move(types), type_columns(),
                                                       SourceTableModel::Reload::in_place),
                    2, {1, 14, 40, 12}),
      u"File types"_s);
  new EmptyNote(*table_, u"document"_s, u"No file types"_s,
                u"This search knows no file types. Go back and choose another search."_s);
  auto* const all = controls.add(Control::select_unselect_Chk, new QCheckBox(u"Select &all"_s),
                                 u"Select all"_s, u"Ticks all file types, or none"_s);
  auto* const thorough = controls.add(
      Control::Thro_Mode_Chk_SIG, new QCheckBox(u"&Thorough search (a second search follows)"_s),
      u"Thorough search"_s, u"A second search follows the first"_s);
  auto* row = new QHBoxLayout;
  row->setSpacing(3 * unit);
  row->addWidget(all);
  row->addStretch(1);
  row->addWidget(thorough);
  auto* column = new QVBoxLayout(this);
  column->setContentsMargins(0, 0, 0, 0);
  column->setSpacing(unit);
  column->addLayout(row);
  column->addWidget(table_, 1);
}

}  // namespace norvo
