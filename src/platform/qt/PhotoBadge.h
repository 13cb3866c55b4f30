// What the gallery tells of how much of a photo is intact: a few characters on its picture, and a
// sentence. Main thread.
#pragma once

#include <QFont>
#include <QPainter>
#include <QRectF>
#include <QString>

#include "platform/qt/Theme.h"
#include "platform/qt/ThumbnailSource.h"

namespace norvo {

// Both empty while nothing is known.
QString badge_text(const PictureJudgement& judgement);
QString badge_sentence(const PictureJudgement& judgement);

// Draws the badge, if there is one, into the lower right corner of `picture`, the place that the
// photo's picture takes. `font` is that of the names.
void draw_badge(QPainter& painter, const QRectF& picture, const PictureJudgement& judgement,
                const QFont& font, const Theme& theme);

}  // namespace norvo
