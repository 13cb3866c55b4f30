// norvo-player: plays one movie for the process at the other end of standard input. Status 2: a
// right could not be given up.
#include <unistd.h>

#include <QAudioDevice>
#include <QAudioSink>
#include <QGuiApplication>
#include <QMediaDevices>

#include "platform/decoder/Sandbox.h"
#include "platform/player/MovieSession.h"
#include "platform/player/PlayerSandbox.h"

namespace {

// The toolkit has one connection for its list of devices and one that all sounds share, which it
// makes for the first of them. False without a device.
bool connect_with_sound_server() {
  const QAudioDevice device = QMediaDevices::defaultAudioOutput();
  if (device.isNull()) return false;
  QAudioSink first(device, device.preferredFormat());
  first.start();
  first.stop();
  return first.error() == QAudio::NoError;
}

}  // namespace

int main(int argc, char** argv) {
  norvo::close_other_descriptors();
  // Nobody reads what a library might print.
  if (dup2(STDERR_FILENO, STDOUT_FILENO) < 0 || !norvo::give_up_player_rights()) return 2;
  // The toolkit's other back end crashes where its plug-ins are missing; and there is no display.
  qputenv("QT_MEDIA_BACKEND", "ffmpeg");
  qputenv("QT_QPA_PLATFORM", "offscreen");
  const QGuiApplication application(argc, argv);
  // A service that starts programs for whoever asks may be as near as the sound server, so nothing
  // can be reached any more by the time the movie comes.
  const bool has_sound = connect_with_sound_server();
  if (!norvo::give_up_new_connections()) return 2;
  const norvo::MovieSession session(STDIN_FILENO, has_sound);
  return QGuiApplication::exec();
}
