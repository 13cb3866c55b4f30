// Saves a picture of every state of the window and of its dialogs.
//
//     window_showcase light|dark PICTURES OUTPUT [WIDTH HEIGHT]
#include <QApplication>
#include <QElapsedTimer>
#include <QThread>
#include <QTimer>
#include <iostream>

#include "platform/qt/Look.h"
#include "platform/qt/QtAlertPanel.h"
#include "platform/qt/QtNotices.h"
#include "window/WindowShowcase.h"

namespace {

using namespace Qt::StringLiterals;

QPalette dark_palette() {
  QPalette palette;
  const QColor window(0x23, 0x25, 0x28);
  const QColor text(0xe6, 0xe7, 0xe9);
  for (const auto role : {QPalette::Window, QPalette::Button, QPalette::AlternateBase}) {
    palette.setColor(role, window);
  }
  for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText,
                          QPalette::ToolTipText, QPalette::BrightText}) {
    palette.setColor(role, text);
  }
  palette.setColor(QPalette::Base, QColor(0x2d, 0x30, 0x34));
  palette.setColor(QPalette::PlaceholderText, QColor(0xa0, 0xa4, 0xa8));
  return palette;
}

// Lets timers and threads work for a while.
void settle(int milliseconds) {
  QElapsedTimer passed;
  passed.start();
  while (passed.elapsed() < milliseconds) {
    QApplication::processEvents();
    QThread::msleep(10);
  }
}

class Shots {
 public:
  explicit Shots(QString folder) : folder_(std::move(folder)) {}

  void save(QWidget& window, const QString& name) const {
    const QString file = folder_ + u'/' + name + u".png"_s;
    if (!window.grab().save(file)) std::cerr << "not written: " << file.toStdString() << '\n';
  }

  // Saves the dialog that `run` opens, and closes it.
  template <class Run>
  void save_dialog(const QString& object_name, const QString& name, Run run) const {
    QTimer::singleShot(250, [&] {
      for (QWidget* window : QApplication::topLevelWidgets()) {
        if (!window->isVisible() || window->objectName() != object_name) continue;
        save(*window, name);
        window->close();
      }
    });
    run();
  }

 private:
  QString folder_;
};

void save_dialogs(norvo::WindowShowcase& showcase, const Shots& shots) {
  const norvo::EditionProfile& edition = showcase.edition();
  norvo::QtNotices notices(
      showcase.window(),
      {.support_address = edition.support_address,
       .reseller_address = edition.reseller_address,
       .web_address = edition.web_address,
       .web_address_2 = edition.web_address_2,
       .pages = {u"Norvo Recovery", u"This edition", u"Questions and answers", u"Orders"}},
      [&] { return norvo::saved_notice({}, true, showcase.results_folder()); },
      [](std::string_view) {});
  shots.save_dialog(u"Browse_Info"_s, u"dialog_browse"_s, [&] { notices.run_Browse_Info(); });
  shots.save_dialog(u"SaveFile_Info"_s, u"dialog_saved"_s, [&] { notices.run_SaveFile_Info(); });
  shots.save_dialog(u"Help_Support"_s, u"dialog_contact"_s, [&] { notices.run_Help_Support(); });
  notices.show_LoadDrive();
  settle(400);
  shots.save(*showcase.window().findChild<QWidget*>(u"LoadDrive_Modeless"_s), u"dialog_loading"_s);
  notices.hide_LoadDrive();
  notices.show_ClearPreview();
  settle(100);
  shots.save(*showcase.window().findChild<QWidget*>(u"ClearPreview_Modeless"_s),
             u"dialog_clearing"_s);
  notices.hide_ClearPreview();
  norvo::QtAlertPanel panel(u"Norvo Recovery for Memory Cards");
  shots.save_dialog(u"alert"_s, u"dialog_message"_s, [&] {
    panel.run({.message = u"\nPlease select a storage media from list.",
               .default_button = u"OK",
               .alternate_button = {},
               .other_button = {},
               .informative_text = {}});
  });
  shots.save_dialog(u"alert"_s, u"dialog_question"_s, [&] {
    panel.run({.message = u"\nDo you want to stop searching?",
               .default_button = u"Yes",
               .alternate_button = {},
               .other_button = u"No",
               .informative_text = {}});
  });
}

}  // namespace

int main(int argc, char** argv) {
  QApplication application(argc, argv);
  const QStringList arguments = QApplication::arguments();
  if (arguments.size() < 4) {
    std::cerr << "Usage: window_showcase light|dark PICTURES OUTPUT [WIDTH HEIGHT]\n";
    return 2;
  }
  if (arguments[1] == u"dark") QApplication::setPalette(dark_palette());
  norvo::Look::install(application);
  const std::filesystem::path folder(QApplication::applicationDirPath().toStdString());
  norvo::WindowShowcase showcase(arguments[2].toStdString(), folder / "norvo-decoder",
                                 NORVO_SIGNATURE_MASTERS);
  if (arguments.size() >= 6) showcase.window().resize(arguments[4].toInt(), arguments[5].toInt());
  const Shots shots(arguments[3]);
  showcase.window().show();
  for (const QString& state : norvo::WindowShowcase::names()) {
    showcase.show(state);
    settle(state.contains(u"photos"_s) ? 1500 : 200);
    shots.save(showcase.window(), state);
  }
  save_dialogs(showcase, shots);
  return 0;
}
