#include "platform/qt/ProgressPanel.h"

#include <QHBoxLayout>
#include <QPushButton>
#include <QVBoxLayout>

#include "platform/qt/ExactProgressBar.h"
#include "platform/qt/Labels.h"
#include "platform/qt/Theme.h"
#include "platform/qt/TitledBox.h"

namespace norvo {
namespace {

using namespace Qt::StringLiterals;

}  // namespace

ProgressPanel::ProgressPanel(ControlTable& controls) {
  auto* const mode = controls.add(Control::Mode_label, new ElidedLabel, u"What is running"_s);
  scale_font(*mode, 1.0, QFont::DemiBold);
  auto* const left = controls.add(Control::time_left, new QuietLabel, u"Time left"_s);
  left->setWordWrap(false);
  auto* const bar = controls.add(Control::Progress_Horz, new ExactProgressBar, u"Progress"_s);
  auto* const sector = controls.add(Control::sector_label, new QuietLabel, u"Searched sectors"_s);
  auto* const stop = controls.add(Control::stop_scan, new QPushButton(u"&Stop"_s), u"Stop"_s,
                                  u"Ends the search; what was found stays"_s);
  auto* const cleared =
      controls.add(Control::ClearThumbnail_Label, new QuietLabel, u"About the shown items"_s);

  auto* box = new TitledBox({});
  // Beside the long sentence on what is running, neither would be whole in the smallest window.
  auto* numbers = new QHBoxLayout;
  numbers->addWidget(sector, 1);
  numbers->addWidget(left);
  auto* texts = new QVBoxLayout;
  texts->setSpacing(unit / 2 + 2);
  texts->addWidget(mode);
  texts->addWidget(bar);
  texts->addLayout(numbers);
  texts->addWidget(cleared);
  auto* row = new QHBoxLayout;
  row->setSpacing(3 * unit);
  row->addLayout(texts, 1);
  row->addWidget(stop, 0, Qt::AlignVCenter);
  box->content().addLayout(row);
  auto* column = new QVBoxLayout(this);
  column->setContentsMargins(0, 0, 0, 0);
  column->addWidget(box);
}

}  // namespace norvo
