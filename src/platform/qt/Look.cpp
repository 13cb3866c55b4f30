#include "platform/qt/Look.h"

#include <QApplication>
#include <QEvent>

#include "platform/qt/Icons.h"
#include "platform/qt/Theme.h"

namespace norvo {

void Look::install(QApplication& application) {
  new Look(application);
}

Look::Look(QApplication& application) : QObject(&application), application_(application) {
  application.setWindowIcon(program_icon());
  application.installEventFilter(this);
  follow_palette();
}

void Look::follow_palette() {
  const QString sheet = style_sheet(Theme::of(QApplication::palette()));
  // Setting a sheet announces a palette again.
  if (sheet != application_.styleSheet()) application_.setStyleSheet(sheet);
}

bool Look::eventFilter(QObject* watched, QEvent* event) {
  if (watched == &application_ && event->type() == QEvent::ApplicationPaletteChange) {
    follow_palette();
  }
  return QObject::eventFilter(watched, event);
}

}  // namespace norvo
