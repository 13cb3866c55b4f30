#include "platform/qt/Header.h"

#include <QHBoxLayout>
#include <QPainter>
#include <QVBoxLayout>
#include <algorithm>

#include "platform/qt/Icons.h"
#include "platform/qt/Labels.h"
#include "platform/qt/Theme.h"

namespace norvo {
namespace {

using namespace Qt::StringLiterals;

constexpr int disc = 3 * unit;
constexpr int entry_gap = unit;
constexpr int line = 3 * unit;

}  // namespace

StepIndicator::StepIndicator(QWidget* parent) : QWidget(parent) {
  setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
  show_step(Step::drive, false);
}

void StepIndicator::show_step(Step step, bool with_file_types) {
  step_ = step;
  with_file_types_ = with_file_types;
  const auto shown = entries();
  const auto current = std::ranges::find_if(shown, &Entry::current);
  if (current != shown.end()) {
    setAccessibleName(u"Step %1 of %2: %3"_s.arg(current - shown.begin() + 1)
                          .arg(shown.size())
                          .arg(current->title));
  }
  updateGeometry();
  update();
}

std::vector<StepIndicator::Entry> StepIndicator::entries() const {
  std::vector<Entry> result;
  const auto add = [this, &result](Step step, const QString& title) {
    result.push_back({title, step < step_, step == step_});
  };
  add(Step::drive, u"Drive"_s);
  add(Step::settings, u"Settings"_s);
  if (with_file_types_) add(Step::file_types, u"File types"_s);
  add(Step::search, u"Search"_s);
  return result;
}

int StepIndicator::entry_width(const Entry& entry) const {
  QFont title_font = font();
  if (entry.current) title_font.setWeight(QFont::DemiBold);
  return disc + entry_gap + QFontMetrics(title_font).horizontalAdvance(entry.title);
}

QSize StepIndicator::sizeHint() const {
  int width = -(2 * entry_gap + line);
  for (const Entry& entry : entries()) width += entry_width(entry) + 2 * entry_gap + line;
  return {width, disc + 2};
}

void StepIndicator::paintEvent(QPaintEvent* /*event*/) {
  const Theme theme = Theme::current();
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  double x = 0;
  int number = 0;
  for (const Entry& entry : entries()) {
    const double middle = height() / 2.0;
    if (number > 0) {
      painter.setPen(QPen(entry.done || entry.current ? theme.accent : theme.strong_border, 1.5));
      painter.drawLine(QPointF(x + entry_gap, middle), QPointF(x + entry_gap + line, middle));
      x += 2 * entry_gap + line;
    }
    const QRectF place(x + 0.75, middle - disc / 2.0 + 0.75, disc - 1.5, disc - 1.5);
    painter.setPen(QPen(entry.done || entry.current ? theme.accent : theme.strong_border, 1.5));
    painter.setBrush(entry.current ? theme.accent : theme.window);
    painter.drawEllipse(place);
    ++number;
    QFont title_font = font();
    if (entry.current) title_font.setWeight(QFont::DemiBold);
    painter.setFont(title_font);
    if (entry.done) {
      draw_icon(painter, u"check"_s, place.adjusted(4, 4, -4, -4), theme.accent);
    } else {
      painter.setPen(entry.current ? theme.on_accent : theme.quiet_text);
      painter.drawText(place, Qt::AlignCenter, QString::number(number));
    }
    painter.setPen(entry.current ? theme.text : theme.quiet_text);
    painter.drawText(QRectF(x + disc + entry_gap, 0, width() - x, height()), Qt::AlignVCenter,
                     entry.title);
    x += entry_width(entry);
  }
}

Header::Header(ControlTable& controls) : title_(new QLabel), steps_(new StepIndicator) {
  scale_font(*title_, 1.7, QFont::DemiBold);
  auto* const type = controls.add(Control::Search_Type, new QuietLabel, u"Search type"_s);
  type->setWordWrap(false);
  auto* texts = new QVBoxLayout;
  texts->setSpacing(2);
  texts->addWidget(title_);
  texts->addWidget(type);
  auto* row = new QHBoxLayout(this);
  row->setContentsMargins(0, 0, 0, 0);
  row->addLayout(texts, 1);
  row->addWidget(steps_, 0, Qt::AlignTop);
}

void Header::show_step(Step step, const QString& title) {
  step_ = step;
  title_->setText(title);
  steps_->show_step(step_, with_file_types_);
}

void Header::show_file_types(bool with_file_types) {
  with_file_types_ = with_file_types;
  steps_->show_step(step_, with_file_types_);
}

}  // namespace norvo
