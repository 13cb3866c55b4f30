#include "platform/qt/MovieView.h"

#include <QEvent>
#include <QHBoxLayout>
#include <QHideEvent>
#include <QSignalBlocker>
#include <QVBoxLayout>
#include <algorithm>
#include <limits>
#include <utility>

#include "platform/qt/Icons.h"
#include "platform/qt/Theme.h"

namespace norvo {
namespace {

using namespace Qt::StringLiterals;

constexpr int button_icon_size = 2 * unit;

int milliseconds(std::chrono::milliseconds time) {
  return static_cast<int>(
      std::clamp<std::int64_t>(time.count(), 0, std::numeric_limits<int>::max()));
}

}  // namespace

MovieView::MovieView(Acts acts, QWidget* parent) : QWidget(parent), acts_(std::move(acts)) {
  picture_ = new QLabel;
  picture_->setObjectName(u"frame"_s);
  picture_->setAlignment(Qt::AlignCenter);
  picture_->setAccessibleName(u"Movie"_s);
  button_ = new QToolButton;
  button_->setIconSize({button_icon_size, button_icon_size});
  button_->setObjectName(u"play_btn"_s);
  connect(button_, &QToolButton::clicked, this, &MovieView::toggle);
  bar_ = new QSlider(Qt::Horizontal);
  bar_->setObjectName(u"position_bar"_s);
  bar_->setAccessibleName(u"Position in the movie"_s);
  connect(bar_, &QSlider::valueChanged, this,
          [this](int value) { acts_.seek(std::chrono::milliseconds(value)); });
  auto* row = new QHBoxLayout;
  row->setContentsMargins(0, 0, 0, 0);
  row->addWidget(button_);
  row->addWidget(bar_, 1);
  auto* column = new QVBoxLayout(this);
  column->setContentsMargins(0, 0, 0, 0);
  column->addWidget(picture_, 1);
  column->addLayout(row);
  clear();
}

void MovieView::clear() {
  const QSignalBlocker silent(bar_);
  bar_->setRange(0, 0);
  bar_->setEnabled(false);
  button_->setEnabled(false);
  picture_->clear();
  set_playing(false);
}

void MovieView::begin(std::chrono::milliseconds duration, const QPixmap& stand_in) {
  const QSignalBlocker silent(bar_);
  bar_->setRange(0, milliseconds(duration));
  bar_->setValue(0);
  // A movie that does not tell its length has no position to go to.
  bar_->setEnabled(duration.count() > 0);
  button_->setEnabled(true);
  picture_->setPixmap(stand_in);
  set_playing(true);
}

void MovieView::show_position(std::chrono::milliseconds position) {
  // The person's hand goes before the movie.
  if (bar_->isSliderDown()) return;
  const QSignalBlocker silent(bar_);
  bar_->setValue(milliseconds(position));
}

void MovieView::show_frame(const QImage& frame) {
  QPixmap pixmap = QPixmap::fromImage(frame);
  pixmap.setDevicePixelRatio(devicePixelRatioF());
  picture_->setPixmap(pixmap);
}

void MovieView::end_reached() {
  set_playing(false);
}

void MovieView::toggle() {
  if (playing_) {
    acts_.pause();
  } else {
    if (bar_->isEnabled() && bar_->value() == bar_->maximum()) acts_.seek({});
    acts_.play();
  }
  set_playing(!playing_);
}

void MovieView::set_playing(bool playing) {
  playing_ = playing;
  draw_button();
  button_->setAccessibleName(playing ? u"Pause"_s : u"Play"_s);
  button_->setToolTip(button_->accessibleName());
}

void MovieView::draw_button() {
  button_->setIcon(icon_pixmap(playing_ ? u"pause"_s : u"play"_s, button_icon_size,
                               Theme::current().text, devicePixelRatioF()));
}

void MovieView::changeEvent(QEvent* event) {
  const bool other_colors =
      event->type() == QEvent::PaletteChange || event->type() == QEvent::StyleChange;
  // The first ones come before the button is made.
  if (other_colors && button_ != nullptr) draw_button();
  QWidget::changeEvent(event);
}

void MovieView::stopPlayingMovie() {
  if (isPlaying()) toggle();
}

void MovieView::hideEvent(QHideEvent* event) {
  // Not by the desktop, which hides a minimized window: the movie goes on there.
  if (!event->spontaneous()) stopPlayingMovie();
  QWidget::hideEvent(event);
}

}  // namespace norvo
