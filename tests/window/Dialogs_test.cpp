#include <QApplication>
#include <QFileDialog>
#include <QMessageBox>
#include <QPushButton>
#include <QTest>
#include <QTimer>
#include <functional>

#include "platform/qt/QtAlertPanel.h"
#include "platform/qt/QtNotices.h"
#include "platform/qt/QtText.h"
#include "window/WindowTest.h"

namespace norvo {
namespace {

using namespace Qt::StringLiterals;

// Does `act` to the dialog of this name as soon as it is visible.
template <class Dialog>
void when_shown(const QString& object_name, std::function<void(Dialog&)> act) {
  QTimer::singleShot(20, qApp, [object_name, act] {
    for (QWidget* widget : QApplication::topLevelWidgets()) {
      auto* const dialog = qobject_cast<Dialog*>(widget);
      if (dialog != nullptr && dialog->isVisible() && dialog->objectName() == object_name) {
        act(*dialog);
        return;
      }
    }
    when_shown<Dialog>(object_name, act);
  });
}

void press(QDialog& dialog, const QString& button) {
  auto* const found = dialog.findChild<QPushButton*>(button);
  ASSERT_NE(found, nullptr) << button.toStdString();
  found->click();
}

const Alert notice{.message = u"\nDone.",
                   .default_button = u"OK",
                   .alternate_button = {},
                   .other_button = {},
                   .informative_text = {}};
const Alert question{.message = u"Stop?",
                     .default_button = u"Yes",
                     .alternate_button = u"Later",
                     .other_button = u"No",
                     .informative_text = u"What was found stays."};

class AlertTest : public testing::Test {
 protected:
  AlertAnswer answer(const Alert& alert, std::function<void(QMessageBox&)> act) {
    when_shown<QMessageBox>(u"alert"_s, std::move(act));
    return panel.run(alert);
  }
  QtAlertPanel panel{u"Norvo Recovery for Cameras"};
};

TEST_F(AlertTest, shows_the_texts_exactly) {
  answer(question, [](QMessageBox& box) {
    EXPECT_EQ(to_text(box.text()), question.message);
    EXPECT_EQ(to_text(box.informativeText()), question.informative_text);
    EXPECT_EQ(box.buttons().size(), 3);
    box.close();
  });
  answer(notice, [](QMessageBox& box) {
    EXPECT_EQ(to_text(box.text()), notice.message);
    EXPECT_EQ(box.buttons().size(), 1);
    box.close();
  });
}

TEST_F(AlertTest, shows_its_text_in_full) {
  for (const TextView message :
       {u"\nDone.", u"\nDo you really want to exit from Norvo Recovery Software?",
        u"\nNo program could be started to open this. Please open it yourself:\n\n"
        u"/home/anna/Pictures/Recovered/Norvo Spruce Results/Photo Search/General Recovery "
        u"Results/JPG/GND00001.JPG"}) {
    for (const Text& more : {Text(), question.informative_text}) {
      Alert alert = question;
      alert.message = message;
      alert.informative_text = more;
      answer(alert, [](QMessageBox& box) {
        const auto* const label = box.findChild<QLabel*>(u"qt_msgbox_label"_s);
        const int flags = label->wordWrap() ? Qt::TextWordWrap : 0;
        const QSize needed =
            label->fontMetrics().boundingRect(label->contentsRect(), flags, label->text()).size();
        EXPECT_LE(needed.width(), label->contentsRect().width()) << box.text().toStdString();
        EXPECT_LE(needed.height(), label->contentsRect().height()) << box.text().toStdString();
        box.close();
      });
    }
  }
}

TEST_F(AlertTest, has_some_width_whatever_its_text) {
  answer(notice, [](QMessageBox& box) {
    EXPECT_GE(box.findChild<QLabel*>(u"qt_msgbox_label"_s)->width(), 280);
    box.close();
  });
}

TEST_F(AlertTest, is_titled_as_the_panel_says) {
  answer(notice, [](QMessageBox& box) {
    EXPECT_EQ(box.windowTitle(), "Norvo Recovery for Cameras");
    box.close();
  });
}

TEST_F(AlertTest, each_button_answers_for_itself) {
  const auto click = [](const QString& title) {
    return [title](QMessageBox& box) {
      for (QAbstractButton* button : box.buttons()) {
        if (button->text() == title) button->click();
      }
    };
  };
  EXPECT_EQ(answer(question, click(u"Yes"_s)), AlertAnswer::default_button);
  EXPECT_EQ(answer(question, click(u"Later"_s)), AlertAnswer::alternate_button);
  EXPECT_EQ(answer(question, click(u"No"_s)), AlertAnswer::other_button);
  EXPECT_EQ(answer(notice, click(u"OK"_s)), AlertAnswer::default_button);
}

TEST_F(AlertTest, return_is_the_default_button) {
  const auto key = [](QMessageBox& box) { QTest::keyClick(&box, Qt::Key_Return); };
  EXPECT_EQ(answer(question, key), AlertAnswer::default_button);
}

TEST_F(AlertTest, escape_and_closing_change_nothing) {
  const auto escape = [](QMessageBox& box) { QTest::keyClick(&box, Qt::Key_Escape); };
  const auto close = [](QMessageBox& box) { box.close(); };
  EXPECT_EQ(answer(question, escape), AlertAnswer::other_button);
  EXPECT_EQ(answer(question, close), AlertAnswer::other_button);
  EXPECT_EQ(answer(notice, escape), AlertAnswer::default_button);
  EXPECT_EQ(answer(notice, close), AlertAnswer::default_button);
}

// As often `part` as it takes to be `pixels` long.
Text text_of_length(const QFontMetrics& metrics, TextView part, int pixels) {
  Text text;
  while (metrics.horizontalAdvance(to_qt(text)) < pixels) text += part;
  return text;
}

const QLabel* label_of(const QWidget& dialog, const QString& text) {
  for (const QLabel* label : dialog.findChildren<QLabel*>()) {
    if (label->text() == text) return label;
  }
  return nullptr;
}

class NoticesTest : public WindowTest {
 protected:
  NoticesTest()
      : notices(
            *window,
            {.support_address = u"help@norvo.example",
             .reseller_address = u"shop@norvo.example",
             .web_address = u"https://www.norvo.example/one",
             .web_address_2 = u"https://www.norvo.example/two",
             .pages = {u"One", u"Two", u"Three", u"Four"}},
            [this] {
              return SavedNotice{
                  .text = u"Saved here:", .place = saved_place, .advice = u"Look at some."};
            },
            [this](std::string_view name) { clicks.emplace_back(name); }) {}

  QWidget* notice_window(const QString& name) { return window->findChild<QWidget*>(name); }

  Text saved_place = u"/home/anna/Found";
  std::vector<std::string> clicks;
  QtNotices notices;
};

TEST_F(NoticesTest, a_notice_stays_up_after_its_button_until_it_is_hidden) {
  when_shown<QDialog>(u"Browse_Info"_s, [](QDialog& dialog) { press(dialog, u"Continue_Btn"_s); });
  EXPECT_EQ(notices.run_Browse_Info(), closed_by_button);
  EXPECT_TRUE(notice_window(u"Browse_Info"_s)->isVisible());
  notices.hide_Browse_Info();
  EXPECT_FALSE(notice_window(u"Browse_Info"_s)->isVisible());
}

TEST_F(NoticesTest, a_notice_that_is_run_keeps_the_person_from_the_rest) {
  window->show();
  const auto is_modal = [](QDialog& dialog) {
    EXPECT_EQ(dialog.windowModality(), Qt::ApplicationModal) << dialog.objectName().toStdString();
    EXPECT_EQ(QApplication::activeModalWidget(), &dialog);
    dialog.close();
  };
  when_shown<QDialog>(u"Browse_Info"_s, is_modal);
  notices.run_Browse_Info();
  when_shown<QDialog>(u"SaveFile_Info"_s, is_modal);
  notices.run_SaveFile_Info();
  when_shown<QDialog>(u"Help_Support"_s, is_modal);
  notices.run_Help_Support();
}

TEST_F(NoticesTest, closing_a_notice_is_not_its_button) {
  when_shown<QDialog>(u"Browse_Info"_s, [](QDialog& dialog) { dialog.close(); });
  EXPECT_EQ(notices.run_Browse_Info(), 0);
  when_shown<QDialog>(u"SaveFile_Info"_s,
                      [](QDialog& dialog) { QTest::keyClick(&dialog, Qt::Key_Escape); });
  EXPECT_EQ(notices.run_SaveFile_Info(), 0);
  EXPECT_FALSE(notice_window(u"SaveFile_Info"_s)->isVisible());
}

TEST_F(NoticesTest, the_end_of_a_search_tells_what_became_of_it_and_names_the_support) {
  when_shown<QDialog>(u"SaveFile_Info"_s, [](QDialog& dialog) {
    for (const QString& text : {u"Saved here:"_s, u"/home/anna/Found"_s, u"Look at some."_s}) {
      EXPECT_NE(label_of(dialog, text), nullptr) << text.toStdString();
    }
    press(dialog, u"Open_Support_Mail"_s);
    press(dialog, u"OK_Btn"_s);
  });
  EXPECT_EQ(notices.run_SaveFile_Info(), closed_by_button);
  notices.close_SaveFile_Info();
  EXPECT_FALSE(notice_window(u"SaveFile_Info"_s)->isVisible());
  EXPECT_EQ(clicks, std::vector<std::string>{"Open_Support_Mail"});
}

TEST_F(NoticesTest, the_end_of_a_search_shows_the_whole_path_however_long) {
  static constexpr int width = 400;
  QFontMetrics metrics = window->fontMetrics();  // the path's, once one was shown
  const auto height_of_path = [this, &metrics](const Text& path) {
    int height = 0;
    saved_place = path;
    when_shown<QDialog>(u"SaveFile_Info"_s, [&](QDialog& dialog) {
      for (const QLabel* label : dialog.findChildren<QLabel*>()) {
        if (to_text(label->text()) != path) continue;
        height = label->height();
        metrics = label->fontMetrics();
        EXPECT_LE(label->width(), width);
        EXPECT_EQ(label->height() % label->fontMetrics().lineSpacing(), 0);
      }
      press(dialog, u"OK_Btn"_s);
    });
    notices.run_SaveFile_Info();
    notices.close_SaveFile_Info();
    return height;
  };
  const int line = height_of_path(u"/home/anna/Found");
  ASSERT_GT(line, 0);
  EXPECT_EQ(height_of_path(text_of_length(metrics, u"/my photos", width * 3 / 2)), 2 * line);
  EXPECT_EQ(height_of_path(u"/home/" + text_of_length(metrics, u"n", width * 3 / 2)), 3 * line)
      << "a name without any gap";
  const int longest = height_of_path(u"/home/" + Text(4000, u'n'));
  EXPECT_GE(longest, 5 * line);
  EXPECT_LE(longest, 8 * line) << "the screen has an end";
  EXPECT_EQ(height_of_path(u"/home/anna/Found"), line);
}

TEST_F(NoticesTest, none_is_shown_with_the_window) {
  window->show();
  for (const QString& name : {u"LoadDrive_Modeless"_s, u"ClearPreview_Modeless"_s, u"Browse_Info"_s,
                              u"SaveFile_Info"_s, u"Help_Support"_s}) {
    EXPECT_FALSE(notice_window(name)->isVisible()) << name.toStdString();
  }
}

TEST_F(NoticesTest, the_loading_notice_is_there_between_show_and_hide) {
  window->show();
  notices.show_LoadDrive();
  EXPECT_TRUE(notice_window(u"LoadDrive_Modeless"_s)->isVisible());
  EXPECT_FALSE(notice_window(u"LoadDrive_Modeless"_s)->isWindow()) << "the keyboard stays";
  notices.hide_LoadDrive();
  EXPECT_FALSE(notice_window(u"LoadDrive_Modeless"_s)->isVisible());
}

// Counts the events of one type that a widget gets.
class EventCounter : public QObject {
 public:
  EventCounter(QWidget& widget, QEvent::Type type) : type_(type) {
    widget.installEventFilter(this);
  }
  int count = 0;

 protected:
  bool eventFilter(QObject* /*watched*/, QEvent* event) override {
    if (event->type() == type_) ++count;
    return false;
  }

 private:
  QEvent::Type type_;
};

TEST_F(NoticesTest, the_loading_notice_is_drawn_before_the_rebuild_begins) {
  show({});
  const EventCounter drawn(*notice_window(u"LoadDrive_Modeless"_s), QEvent::Paint);
  bool rest_was_done = false;
  QMetaObject::invokeMethod(
      window.get(), [&] { rest_was_done = true; }, Qt::QueuedConnection);
  notices.show_LoadDrive();
  EXPECT_GT(drawn.count, 0);
  EXPECT_TRUE(rest_was_done) << "what the system must do for it";
}

TEST_F(NoticesTest, the_main_window_comes_to_the_front_after_the_rebuild) {
  show({});
  QWidget other;
  other.show();
  other.activateWindow();
  ASSERT_TRUE(QTest::qWaitForWindowActive(&other, patience));
  notices.show_LoadDrive();
  const EventCounter raised(*window, QEvent::ZOrderChange);
  notices.hide_LoadDrive();
  EXPECT_EQ(raised.count, 1);
  EXPECT_TRUE(QTest::qWaitForWindowActive(window.get(), patience));
}

TEST_F(NoticesTest, the_clearing_notice_leaves_the_window_to_the_person) {
  show({Control::stop_scan});
  QWidget* const had_focus = window->focusWidget();
  notices.show_ClearPreview();
  QWidget* const sheet = notice_window(u"ClearPreview_Modeless"_s);
  EXPECT_TRUE(sheet->isVisible());
  EXPECT_FALSE(sheet->isWindow());
  EXPECT_EQ(window->focusWidget(), had_focus);
  QTest::mouseClick(&find<QWidget>(Control::stop_scan), Qt::LeftButton);
  EXPECT_EQ(events.lines, std::vector<std::string>{"clicked _stop_scan"});
  notices.hide_ClearPreview();
  EXPECT_FALSE(sheet->isVisible());
}

TEST_F(NoticesTest, the_contact_dialog_tells_each_of_its_buttons) {
  const std::vector<std::string> names{"Copy_Email",        "Copy_URL",           "Copy_URL_2",
                                       "Open_Support_Mail", "Open_Reseller_Mail", "Open_Page_1",
                                       "Open_Page_2",       "Open_Page_3",        "Open_Page_4"};
  when_shown<QDialog>(u"Help_Support"_s, [&names](QDialog& dialog) {
    for (const std::string& name : names) press(dialog, QString::fromStdString(name));
    dialog.close();
  });
  notices.run_Help_Support();
  EXPECT_EQ(clicks, names);
  EXPECT_FALSE(notice_window(u"Help_Support"_s)->isVisible());
}

TEST_F(NoticesTest, each_address_of_the_contact_dialog_stands_below_what_it_is) {
  const QWidget& dialog = *notice_window(u"Help_Support"_s);
  const auto caption_of = [&dialog](const QString& address) {
    const QLabel* const shown = label_of(dialog, address);
    for (const QLabel* label : dialog.findChildren<QLabel*>()) {
      if (shown != nullptr && label->geometry().bottom() + 1 == shown->geometry().top()) {
        return label->text();
      }
    }
    return QString();
  };
  notice_window(u"Help_Support"_s)->layout()->activate();
  EXPECT_EQ(caption_of(u"https://www.norvo.example/one"_s), u"Web");
  EXPECT_EQ(caption_of(u"https://www.norvo.example/two"_s), u"This edition");
}

TEST_F(NoticesTest, the_support_address_is_a_link_wherever_it_stands) {
  for (const QString& dialog : {u"Help_Support"_s, u"SaveFile_Info"_s}) {
    const auto* const link = notice_window(dialog)->findChild<QPushButton*>(u"Open_Support_Mail"_s);
    ASSERT_NE(link, nullptr);
    EXPECT_EQ(link->text(), u"help@norvo.example");
    EXPECT_EQ(link->property("look").toString(), u"link");
  }
}

TEST_F(NoticesTest, the_folder_chooser_gives_a_folder_or_nothing) {
  const QString folder = QString::fromStdString(testing::TempDir());
  when_shown<QFileDialog>(u"folder_chooser"_s, [&folder](QFileDialog& dialog) {
    dialog.setDirectory(folder);
    QMetaObject::invokeMethod(&dialog, "accept");
  });
  const auto chosen = notices.choose_folder();
  ASSERT_TRUE(chosen.has_value());
  EXPECT_TRUE(std::filesystem::equivalent(*chosen, testing::TempDir()));
  when_shown<QFileDialog>(u"folder_chooser"_s, [](QFileDialog& dialog) { dialog.reject(); });
  EXPECT_EQ(notices.choose_folder(), std::nullopt);
}

TEST_F(NoticesTest, the_folder_chooser_is_a_sheet_with_folders_only) {
  when_shown<QFileDialog>(u"folder_chooser"_s, [this](QFileDialog& dialog) {
    EXPECT_TRUE(dialog.testOption(QFileDialog::ShowDirsOnly));
    EXPECT_EQ(dialog.fileMode(), QFileDialog::Directory) << "one folder";
    EXPECT_FALSE(dialog.testOption(QFileDialog::ReadOnly)) << "new ones can be made";
    EXPECT_FALSE(dialog.testOption(QFileDialog::DontResolveSymlinks));
    EXPECT_EQ(dialog.windowModality(), Qt::WindowModal);
    EXPECT_EQ(dialog.parentWidget(), window.get());
    dialog.reject();
  });
  notices.choose_folder();
}

}  // namespace
}  // namespace norvo
