#include "platform/qt/MailLink.h"

#include "platform/qt/QtText.h"

namespace norvo {

using namespace Qt::StringLiterals;

MailLink::MailLink(const Text& address, const QString& name) : QPushButton(to_qt(address)) {
  setObjectName(name);
  setProperty("look", u"link"_s);
  setAccessibleName(u"Write to "_s + to_qt(address));
  setCursor(Qt::PointingHandCursor);
  setAutoDefault(false);
}

}  // namespace norvo
