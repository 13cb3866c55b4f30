// The whole program with its window, driven as a person drives it: clicks on controls that are
// found by their names, and answers to dialogs as they come up.
#pragma once

#include <QElapsedTimer>
#include <QTimer>
#include <QWidget>
#include <deque>
#include <functional>
#include <memory>
#include <sstream>
#include <string>
#include <vector>

#include "platform/qt/WindowProgram.h"
#include "support/FakeDevice.h"
#include "support/TemporaryFolder.h"

namespace norvo::test {

// Answers dialogs while the program waits for them, and writes down what they said.
class DialogAnswers : public QObject {
 public:
  DialogAnswers();

  // The next dialog named `dialog` is answered with its button `button` (its object name, or its
  // caption without the mnemonic); "Escape" presses that key.
  void expect(const std::string& dialog, const std::string& button);

  // As expect(), for the folder chooser.
  void expect_folder(const std::filesystem::path& folder);

  // As expect(), for the chooser of disk images.
  void expect_image(const std::filesystem::path& image);

  // Called with each dialog that comes up, before it is answered.
  std::function<void(QWidget& dialog)> on_dialog;

  // The texts of the alerts that were answered, in their order.
  const std::vector<Text>& alerts() const { return alerts_; }

  // The names of all dialogs that were answered.
  const std::vector<std::string>& answered() const { return answered_; }
  bool all_answered() const { return expected_.empty(); }

 private:
  struct Expected {
    std::string dialog;
    std::string button;
    std::filesystem::path chosen;
  };
  void look();
  void answer(QWidget& dialog, const Expected& expected);

  QTimer timer_;
  std::deque<Expected> expected_;
  std::vector<Text> alerts_;
  std::vector<std::string> answered_;
};

// What the program was asked about sleep.
class RecordingSleepGuard final : public SleepGuard {
 public:
  explicit RecordingSleepGuard(std::vector<bool>& asked) : asked_(asked) {}
  void hold_off_sleep(bool on) override { asked_.push_back(on); }

 private:
  std::vector<bool>& asked_;
};

class WindowFlow {
 public:
  // One removable card, "sdx1", that holds `medium`. `looked_for_drives` is called each time that
  // the mounted volumes are asked for. The system keeps permissions for each program where there is
  // a `privacy_reset`.
  explicit WindowFlow(FakeMedium& medium, TextView bundle_name = u"Norvo Spruce",
                      std::function<void()> looked_for_drives = {},
                      std::unique_ptr<PrivacyReset> privacy_reset = nullptr);
  ~WindowFlow();

  QWidget& widget(Control control) { return program_->window().widget(control); }
  bool is_visible(Control control) { return widget(control).isVisible(); }
  bool is_enabled(Control control) { return widget(control).isEnabled(); }
  Text text(Control control) { return program_->window().text(control); }
  std::int32_t screen_counter() { return program_->controller().wizard.screen_counter; }

  void click(Control control);
  void select_row(Control table, int row);
  void select_drive() { select_row(Control::idTableView, 0); }
  void type(Control field, const QString& text);

  // Runs the event loop until `done` says so. False when it does not within four minutes: the
  // decoders of a search leave the processor to everything else, and beside a compiler a picture
  // has taken more than one.
  bool wait_until(const std::function<bool()>& done);

  // Chooses the destination folder by the browse button of the page.
  void choose_destination(Control browse_button = Control::browse_path);

  // From the settings page through the search to the end of its final screen.
  bool search_to_the_end();

  std::filesystem::path destination() const { return folder_.path() / "destination"; }
  std::filesystem::path folder() const { return folder_.path(); }

  WindowProgram& program() { return *program_; }
  DialogAnswers dialogs;
  std::vector<bool> sleep_asked;
  bool lies_on_device = false;  // every folder on the card
  std::ostringstream system_log;

 private:
  TemporaryFolder folder_;
  FakeOpener opener_;
  std::unique_ptr<WindowProgram> program_;
};

// A card with pictures of its own: `photos` small JPEGs, each followed by some sectors of zeros.
std::vector<std::uint8_t> card_with_photos(int photos);

}  // namespace norvo::test
