#include "platform/qt/Theme.h"

#include <QApplication>
#include <QFile>
#include <QWidget>
#include <algorithm>
#include <array>
#include <cmath>
#include <initializer_list>
#include <optional>
#include <utility>

namespace norvo {
namespace {

using namespace Qt::StringLiterals;

constexpr double legible = 4.6;
constexpr double visible = 3.1;

double luminance(const QColor& color) {
  const auto linear = [](double part) {
    return part <= 0.04045 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
  };
  return 0.2126 * linear(color.redF()) + 0.7152 * linear(color.greenF()) +
         0.0722 * linear(color.blueF());
}

// The colour between `text` and the first of `grounds` that is as near to that as `least` allows on
// all of them.
QColor softened(const QColor& text, std::initializer_list<QColor> grounds, double least) {
  for (int percent = 80; percent > 0; percent -= 2) {
    const QColor color = mixed(text, *grounds.begin(), percent / 100.0);
    const bool enough = std::ranges::all_of(
        grounds, [&](const QColor& ground) { return contrast(color, ground) >= least; });
    if (enough) return color;
  }
  return text;
}

}  // namespace

double contrast(const QColor& first, const QColor& second) {
  const double one = luminance(first) + 0.05;
  const double other = luminance(second) + 0.05;
  return std::max(one, other) / std::min(one, other);
}

QColor mixed(const QColor& first, const QColor& second, double share) {
  const auto part = [share](float from, float to) {
    return from + (to - from) * static_cast<float>(share);
  };
  return QColor::fromRgbF(part(first.redF(), second.redF()), part(first.greenF(), second.greenF()),
                          part(first.blueF(), second.blueF()));
}

Theme Theme::of(const QPalette& palette) {
  Theme theme;
  theme.window = palette.color(QPalette::Active, QPalette::Window);
  theme.surface = palette.color(QPalette::Active, QPalette::Base);
  theme.text = palette.color(QPalette::Active, QPalette::WindowText);
  theme.dark = luminance(theme.window) < luminance(theme.text);
  theme.hover = mixed(theme.surface, theme.text, 0.06);
  theme.border = mixed(theme.window, theme.text, 0.14);
  theme.strong_border = softened(theme.text, {theme.surface, theme.window}, visible);
  // The program's own colour, moved towards the text until it can be read on this palette.
  const QColor own = theme.dark ? QColor(0x4f, 0xc3, 0xc9) : QColor(0x0a, 0x6c, 0x74);
  theme.accent = own;
  for (int tenths = 1; tenths < 10 && (contrast(theme.accent, theme.window) < legible ||
                                       contrast(theme.accent, theme.surface) < legible);
       ++tenths) {
    theme.accent = mixed(own, theme.text, tenths / 10.0);
  }
  theme.on_accent = contrast(theme.accent, theme.surface) > contrast(theme.accent, theme.text)
                        ? theme.surface
                        : theme.text;
  theme.accent_tint = mixed(theme.surface, theme.accent, theme.dark ? 0.2 : 0.14);
  theme.quiet_text =
      softened(theme.text, {theme.surface, theme.window, theme.accent_tint}, legible);
  return theme;
}

Theme Theme::current() {
  // Every tile of a gallery asks, and finding colours that can be read takes longer than drawing
  // it.
  static std::optional<std::pair<qint64, Theme>> known;
  const QPalette palette = QApplication::palette();
  const qint64 key = palette.cacheKey();
  if (!known || known->first != key) known.emplace(key, of(palette));
  return known->second;
}

void scale_font(QWidget& widget, double factor, QFont::Weight weight) {
  QFont font = QApplication::font();
  font.setPointSizeF(font.pointSizeF() * factor);
  font.setWeight(weight);
  widget.setFont(font);
}

QString style_sheet(const Theme& theme) {
  QFile file(u":/norvo/look.css"_s);
  if (!file.open(QIODevice::ReadOnly)) return {};
  QString sheet = QString::fromUtf8(file.readAll());
  const std::array<std::pair<QString, QColor>, 10> colors{{
      {u"@window@"_s, theme.window},
      {u"@surface@"_s, theme.surface},
      {u"@hover@"_s, theme.hover},
      {u"@text@"_s, theme.text},
      {u"@quiet-text@"_s, theme.quiet_text},
      {u"@border@"_s, theme.border},
      {u"@strong-border@"_s, theme.strong_border},
      {u"@accent@"_s, theme.accent},
      {u"@on-accent@"_s, theme.on_accent},
      {u"@accent-tint@"_s, theme.accent_tint},
  }};
  for (const auto& [name, color] : colors) sheet.replace(name, color.name());
  sheet.replace(u"@tick@"_s, luminance(theme.on_accent) > 0.5 ? u":/norvo/icons/tick-light.svg"_s
                                                              : u":/norvo/icons/tick-dark.svg"_s);
  return sheet;
}

}  // namespace norvo
