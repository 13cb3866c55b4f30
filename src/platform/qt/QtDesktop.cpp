#include "platform/qt/QtDesktop.h"

#include <QClipboard>
#include <QCoreApplication>
#include <QDesktopServices>
#include <QGuiApplication>
#include <QUrl>

#include "platform/qt/QtText.h"

namespace norvo {

bool QtDesktop::open_path(const std::filesystem::path& path) {
  return QDesktopServices::openUrl(QUrl::fromLocalFile(path_to_qt(path)));
}

bool QtDesktop::open_address(TextView address) {
  return QDesktopServices::openUrl(QUrl(to_qt(address), QUrl::TolerantMode));
}

void QtDesktop::copy_text(TextView text) {
  QGuiApplication::clipboard()->setText(to_qt(text));
}

void QtDesktop::terminate() {
  // quit() would ask every window first, and the main window asks the person.
  QCoreApplication::exit(0);
}

}  // namespace norvo
