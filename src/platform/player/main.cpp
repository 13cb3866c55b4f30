// norvo-player: plays one movie for the process at the other end of standard input. Status 2: a
// right could not be given up.
#include <unistd.h>

#include <QGuiApplication>

#include "platform/decoder/Sandbox.h"
#include "platform/player/MovieSession.h"
#include "platform/player/PlayerSandbox.h"

int main(int argc, char** argv) {
  norvo::close_other_descriptors();
  // Nobody reads what a library might print.
  if (dup2(STDERR_FILENO, STDOUT_FILENO) < 0 || !norvo::give_up_player_rights()) return 2;
  // The toolkit's other back end crashes where its plug-ins are missing; and there is no display.
  qputenv("QT_MEDIA_BACKEND", "ffmpeg");
  qputenv("QT_QPA_PLATFORM", "offscreen");
  const QGuiApplication application(argc, argv);
  const norvo::MovieSession session(STDIN_FILENO);
  return QGuiApplication::exec();
}
