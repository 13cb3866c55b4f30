// The colours of the window, all taken or mixed from the system's palette but the accent, and the
// sizes that everything is laid out on. Main thread.
#pragma once

#include <QColor>
#include <QFont>
#include <QPalette>
#include <QString>

class QWidget;

namespace norvo {

struct Theme {
  bool dark = false;
  QColor window;
  QColor surface;  // cards, fields, lists
  QColor hover;    // a surface under the pointer
  QColor text;
  QColor quiet_text;     // at least 4.5 : 1 on window, surface and accent_tint
  QColor border;         // separates, says nothing
  QColor strong_border;  // the edge of what can be used: at least 3 : 1
  QColor accent;         // at least 4.5 : 1 on window and surface
  QColor on_accent;
  QColor accent_tint;  // behind what is selected; `text` stays legible on it

  static Theme of(const QPalette& palette);

  // Of the application's palette.
  static Theme current();
};

// How well two opaque colours can be told apart, 1 to 21.
double contrast(const QColor& first, const QColor& second);

// `share` (0 to 1) of `second` in `first`.
QColor mixed(const QColor& first, const QColor& second, double share);

// Lengths are multiples of this many device-independent pixels.
inline constexpr int unit = 8;

// The side of the icon beside a message, in device-independent pixels.
inline constexpr int message_icon_size = 5 * unit;

// Makes the text of `widget` `factor` times as large as the application's font.
void scale_font(QWidget& widget, double factor, QFont::Weight weight = QFont::Normal);

// The style sheet that gives the toolkit's own widgets these colours.
QString style_sheet(const Theme& theme);

}  // namespace norvo
