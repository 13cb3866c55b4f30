// A program for addresses, as a desktop would have one.
#pragma once

#include <QDesktopServices>
#include <QObject>
#include <QUrl>
#include <utility>
#include <vector>

namespace norvo::test {

// Takes every address of one scheme as long as it lives. Main thread.
class UrlTaker : public QObject {
  Q_OBJECT

 public:
  explicit UrlTaker(QString scheme) : scheme_(std::move(scheme)) {
    QDesktopServices::setUrlHandler(scheme_, this, "take");
  }
  ~UrlTaker() override { QDesktopServices::unsetUrlHandler(scheme_); }

  Q_INVOKABLE void take(const QUrl& url) { taken.push_back(url); }

  std::vector<QUrl> taken;

 private:
  QString scheme_;
};

}  // namespace norvo::test
