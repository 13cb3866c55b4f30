// The notices of the program: the contact dialog, and the end of a search.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QApplication>
#include <QClipboard>
#include <QLabel>
#include <QPushButton>

#include "platform/qt/QtText.h"
#include "window/flow/WindowFlow.h"

namespace norvo {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::IsSupersetOf;

// The texts of the visible labels and buttons.
std::vector<Text> texts_of(const QWidget& dialog) {
  std::vector<Text> texts;
  for (const QLabel* label : dialog.findChildren<QLabel*>())
    texts.push_back(to_text(label->text()));
  for (const QPushButton* button : dialog.findChildren<QPushButton*>()) {
    texts.push_back(to_text(button->text()));
  }
  return texts;
}

// Presses a button of the contact dialog as soon as that is there, and closes the dialog when what
// the button does is done.
class ContactPresser : public QObject {
 public:
  explicit ContactPresser(QString button) : button_(std::move(button)) { startTimer(5); }

 protected:
  void timerEvent(QTimerEvent* event) override {
    QWidget* const dialog = QApplication::activeModalWidget();
    if (dialog == nullptr || dialog->objectName() != "Help_Support") return;
    killTimer(event->timerId());
    dialog->findChild<QPushButton*>(button_)->click();
    dialog->close();
  }

 private:
  QString button_;
};

class NoticesFlow : public testing::Test {
 protected:
  // What the notice at the end of a photo search of the whole card says.
  std::vector<Text> end_of_search(test::WindowFlow& flow) {
    std::vector<Text> texts;
    flow.select_drive();
    flow.click(Control::next_btn);
    flow.choose_destination();
    flow.dialogs.on_dialog = [&texts](const QWidget& dialog) {
      if (dialog.objectName() == "SaveFile_Info") texts = texts_of(dialog);
    };
    EXPECT_TRUE(flow.search_to_the_end());
    return texts;
  }

  test::FakeMedium medium_;
};

TEST_F(NoticesFlow, TheContactDialogNamesTheAddressesOfTheEdition) {
  medium_.bytes = test::card_with_photos(1);
  test::WindowFlow flow(medium_, u"Norvo Cedar");
  const EditionProfile& edition = flow.program().controller().profile();
  std::vector<Text> texts;
  flow.dialogs.expect("Help_Support", "OK_Btn");
  flow.dialogs.on_dialog = [&texts](const QWidget& dialog) { texts = texts_of(dialog); };
  flow.click(Control::contact_btn);
  EXPECT_THAT(texts, IsSupersetOf({edition.support_address, edition.reseller_address,
                                   edition.web_address, edition.web_address_2}));
}

TEST_F(NoticesFlow, ACopiedAddressIsOnTheClipboardAndSaidToBe) {
  medium_.bytes = test::card_with_photos(1);
  test::WindowFlow flow(medium_);
  QGuiApplication::clipboard()->setText("before");
  flow.dialogs.expect("alert", "OK");
  std::vector<QString> titles;
  flow.dialogs.on_dialog = [&titles](const QWidget& dialog) {
    titles.push_back(dialog.windowTitle());
  };
  const ContactPresser presser("Copy_URL_2");
  flow.click(Control::contact_btn);
  EXPECT_THAT(flow.dialogs.alerts(), ElementsAre(u"\nText copied successfully."));
  EXPECT_EQ(to_text(QGuiApplication::clipboard()->text()),
            flow.program().controller().profile().web_address_2);
  EXPECT_THAT(titles, ElementsAre("Norvo Recovery for All Media"));
}

TEST_F(NoticesFlow, TheEndOfASearchNamesTheFolderOfItsFiles) {
  medium_.bytes = test::card_with_photos(3);
  test::WindowFlow flow(medium_);
  EXPECT_THAT(end_of_search(flow),
              IsSupersetOf({Text(u"What was found and saved lies in this folder:"),
                            to_text(path_to_qt(flow.destination() / "Norvo Spruce Results" /
                                               "Photo Search"))}));
}

TEST_F(NoticesFlow, TheEndOfASearchInVainNamesTheSearch) {
  medium_.bytes.assign(64 * sector_size, 0x5A);
  test::WindowFlow flow(medium_);
  const std::vector<Text> texts = end_of_search(flow);
  EXPECT_THAT(texts, IsSupersetOf({Text(u"This search has saved no complete file:"),
                                   Text(u"Photo Search, entire disk sdx1")}));
  EXPECT_THAT(texts, Contains(flow.program().controller().profile().support_address));
}

}  // namespace
}  // namespace norvo
