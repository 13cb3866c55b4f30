#include "platform/qt/WindowApplication.h"

#include <QApplication>
#include <QFileInfo>
#include <QIcon>
#include <cstdlib>
#include <optional>

#include "app/Bundle.h"
#include "platform/BundleInfo.h"
#include "platform/System.h"
#include "platform/SystemLog.h"
#include "platform/WindowSystem.h"
#include "platform/qt/Look.h"
#include "platform/qt/QtText.h"
#include "platform/qt/WindowProgram.h"

namespace norvo {
namespace fs = std::filesystem;
namespace {

// Behind the program's path and the three marks of its start.
constexpr int first_image = 4;

constexpr TextView program_name = u"Norvo Recovery";

// Of all editions; logs take a name up to its first blank.
constexpr const char* log_name = "norvo-recovery";

int refuse_to_start(TextView message) {
  QtAlertPanel panel(program_name);
  static_cast<void>(panel.run({.message = Text(message),
                               .default_button = u"OK",
                               .alternate_button = {},
                               .other_button = {},
                               .informative_text = {}}));
  return 1;
}

Text process_name() {
  return to_text(QFileInfo(QCoreApplication::applicationFilePath()).fileName());
}

// A desktop with menu entries finds the edition's entry by this name, and so does the program the
// edition's icon. Its files are named in small letters.
void name_menu_entry(const Text& bundle_identifier) {
  const QString name = to_qt(bundle_identifier).toLower();
  QApplication::setDesktopFileName(name);
  QApplication::setWindowIcon(QIcon::fromTheme(name, QApplication::windowIcon()));
}

// No search is waited for: a drive that does not answer would keep the process for minutes. As long
// as one of its threads waits for a drive, the system keeps what is left of the process, and its
// window if that is still there.
[[noreturn]] void leave_at_once(WindowProgram& program, int status) {
  program.window().hide();
  QApplication::processEvents();
  std::_Exit(status);
}

}  // namespace

int run_window_application(int argc, char** argv, DeviceOpener& opener) {
  QApplication application(argc, argv);
  QApplication::setApplicationName(to_qt(program_name));
  QApplication::setQuitOnLastWindowClosed(false);
  Look::install(application);
  const fs::path bundle = main_bundle_path(executable_folder().native());
  const std::optional<Text> name = read_bundle_property(bundle, "CFBundleName");
  if (const auto reason = reason_not_to_start(name)) return refuse_to_start(*reason);
  const Text identifier = read_bundle_property(bundle, "CFBundleIdentifier").value_or(Text());
  name_menu_entry(identifier);
  SystemLog log(log_name);
  WindowProgram program({.bundle_name = *name,
                         .bundle_identifier = identifier,
                         .process_name = process_name(),
                         .resource_folder = bundle / "Contents" / "Resources",
                         .decoder = executable_folder() / "norvo-decoder",
                         .player = executable_folder() / "norvo-player",
                         .opener = opener,
                         .disk_utility = make_system_disk_utility(),
                         .sleep_guard = make_system_sleep_guard(),
                         .privacy_reset = make_system_privacy_reset(),
                         .permission_help = permission_help(),
                         .raw_node = raw_node,
                         .lies_on_device = lies_on_device,
                         .log = log.stream()});
  program.show();
  for (int i = first_image; i < argc; ++i) program.open_disk_image(argv[i]);
  const int status = QApplication::exec();
  program.shutdown();
  if (program.has_worker()) leave_at_once(program, status);
  return status;
}

}  // namespace norvo
