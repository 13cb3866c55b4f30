// A mail address that looks like a link and is pressed like a button. Main thread.
#pragma once

#include <QPushButton>

#include "util/Text.h"

namespace norvo {

class MailLink : public QPushButton {
 public:
  MailLink(const Text& address, const QString& name);
};

}  // namespace norvo
