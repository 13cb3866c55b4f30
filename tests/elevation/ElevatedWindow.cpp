// The whole program with its window, which asks for the right to read drives as it does for
// people, and a person's hand: it searches one drive, reports what happened and leaves.
//
// Resources/plan.json of its bundle says:
//   report        the file for what it finds
//   drive         the identifier of the drive that it chooses from the list
//   destination   the folder that it chooses
//   final_dialog, final_button   the dialog that the search ends with, and its answer
#include <QAbstractItemView>
#include <QApplication>
#include <QTest>
#include <QThread>
#include <QTimer>
#include <cstdlib>

#include "elevation/ProbeReport.h"
#include "platform/Start.h"
#include "platform/qt/MainWindow.h"
#include "platform/qt/QtText.h"
#include "platform/qt/WindowApplication.h"
#include "window/flow/WindowFlow.h"

namespace {

using Json = nlohmann::json;
using norvo::Control;
using norvo::MainWindow;

constexpr int long_enough = 120000;  // milliseconds, for a search on a slow machine

MainWindow* find_window() {
  for (QWidget* const widget : QApplication::topLevelWidgets()) {
    if (auto* const window = dynamic_cast<MainWindow*>(widget)) return window;
  }
  return nullptr;
}

class Hand {
 public:
  explicit Hand(MainWindow& window) : window_(window), plan_(norvo::test::read_plan()) {}

  void search_and_report() {
    const std::string drive = plan_["drive"];
    Json report{{"status", norvo::test::own_status()},
                {"alone", norvo::test::open_alone("/dev/" + drive)},
                {"drives", cells(Control::idTableView)}};
    const bool chosen = choose_drive(drive);
    report["chosen"] = chosen;
    if (chosen) {
      report["ended"] = search();
      report["shown"] = view(Control::imageBrowser).model()->rowCount();
    }
    Json alerts = Json::array();
    for (const norvo::Text& alert : dialogs_.alerts()) {
      alerts.push_back(norvo::utf8_from_text(alert));
    }
    report["alerts"] = alerts;
    norvo::test::write_report(plan_["report"].get<std::string>(), report);
  }

 private:
  QAbstractItemView& view(Control control) {
    return *qobject_cast<QAbstractItemView*>(&window_.widget(control));
  }

  Json cells(Control table) {
    Json rows = Json::array();
    const QAbstractItemModel& model = *view(table).model();
    for (int row = 0; row < model.rowCount(); ++row) {
      Json cells = Json::array();
      for (int column = 0; column < model.columnCount(); ++column) {
        cells.push_back(model.index(row, column).data().toString().toStdString());
      }
      rows.push_back(cells);
    }
    return rows;
  }

  bool choose_drive(const std::string& drive) {
    QAbstractItemView& drives = view(Control::idTableView);
    for (int row = 0; row < drives.model()->rowCount(); ++row) {
      const QModelIndex cell = drives.model()->index(row, 0);
      if (cell.data().toString().toStdString() != drive) continue;
      QTest::mouseClick(drives.viewport(), Qt::LeftButton, Qt::NoModifier,
                        drives.visualRect(cell).center());
      return true;
    }
    return false;
  }

  void click(Control control) {
    QWidget& widget = window_.widget(control);
    QTest::mouseClick(&widget, Qt::LeftButton, Qt::NoModifier,
                      QPoint(std::min(12, widget.width() / 2), widget.height() / 2));
  }

  // Whether the search ended with the dialog that was planned.
  bool search() {
    click(Control::next_btn);
    dialogs_.expect("Browse_Info", "Continue_Btn");
    dialogs_.expect_folder(plan_["destination"].get<std::string>());
    click(Control::browse_path);
    dialogs_.expect(plan_["final_dialog"], plan_["final_button"]);
    click(Control::next_btn);
    return QTest::qWaitFor(
        [this] { return dialogs_.all_answered() && window_.widget(Control::back_btn).isEnabled(); },
        long_enough);
  }

  MainWindow& window_;
  Json plan_;
  norvo::test::DialogAnswers dialogs_;
};

// The window in use: shown, and its event loop running.
MainWindow* window_in_use() {
  MainWindow* const window = find_window();
  const bool ready =
      window != nullptr && window->isVisible() && QThread::currentThread()->loopLevel() == 1;
  return ready ? window : nullptr;
}

void begin() {
  auto* const timer = new QTimer(qApp);
  QObject::connect(timer, &QTimer::timeout, qApp, [timer] {
    MainWindow* const window = window_in_use();
    if (window == nullptr) return;
    timer->stop();
    Hand(*window).search_and_report();
    QApplication::exit(0);
  });
  timer->start(50);
}

int run(int argc, char** argv, norvo::DeviceOpener& opener) {
  setenv("QT_QPA_PLATFORM", "offscreen", 1);
  return norvo::run_window_application(argc, argv, opener);
}

}  // namespace

Q_COREAPP_STARTUP_FUNCTION(begin)

int main(int argc, char** argv) {
  return norvo::start_program(argc, argv, run);
}
