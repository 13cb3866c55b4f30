#include "platform/qt/PhotoBadge.h"

#include <QFontMetricsF>
#include <QPen>
#include <algorithm>

namespace norvo {
namespace {

using namespace Qt::StringLiterals;
using Judged = PictureJudgement::Kind;

constexpr double badge_margin = unit / 2.0;

}  // namespace

QString badge_text(const PictureJudgement& judgement) {
  switch (judgement.kind) {
    case Judged::whole:
      return u"\u2713"_s;
    case Judged::partly:
      return judgement.percent ? QString::number(*judgement.percent) + u" %"_s : u"Partly"_s;
    case Judged::embedded_only:
      return u"Preview"_s;
    case Judged::unknown:
      break;
  }
  return {};
}

QString badge_sentence(const PictureJudgement& judgement) {
  switch (judgement.kind) {
    case Judged::whole:
      return u"The whole picture can be decoded."_s;
    case Judged::partly:
      return judgement.percent
                 ? u"About %1 percent of the picture can be decoded."_s.arg(int{*judgement.percent})
                 : u"Only a part of the picture can be decoded."_s;
    case Judged::embedded_only:
      return u"Only the small preview inside the file can be decoded."_s;
    case Judged::unknown:
      break;
  }
  return {};
}

void draw_badge(QPainter& painter, const QRectF& picture, const PictureJudgement& judgement,
                const QFont& font, const Theme& theme) {
  const QString text = badge_text(judgement);
  if (text.isEmpty()) return;
  QFont small = font;
  small.setPointSizeF(font.pointSizeF() * 0.85);
  const QFontMetricsF metrics(small);
  const double height = metrics.height() + 2;
  QRectF pill(0, 0, std::max(height, metrics.horizontalAdvance(text) + unit), height);
  pill.moveBottomRight(picture.bottomRight() - QPointF(badge_margin, badge_margin));
  // A glance tells the damaged ones.
  const bool whole = judgement.kind == Judged::whole;
  painter.setFont(small);
  painter.setPen(QPen(theme.surface, 1));
  painter.setBrush(whole ? theme.accent : theme.text);
  painter.drawRoundedRect(pill, height / 2, height / 2);
  painter.setPen(whole ? theme.on_accent : theme.surface);
  painter.drawText(pill, Qt::AlignCenter, text);
}

}  // namespace norvo
