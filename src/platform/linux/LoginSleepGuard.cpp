// Sleep is held off through the login manager, which keeps a lock for as long as the descriptor
// that it hands out is open. It is there on every system with systemd or elogind; elsewhere, and
// in a process that it does not know, nothing happens.
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusReply>
#include <QDBusUnixFileDescriptor>

#include "platform/WindowSystem.h"

namespace norvo {
namespace {

class LoginSleepGuard final : public SleepGuard {
 public:
  void hold_off_sleep(bool on) override {
    lock_ = QDBusUnixFileDescriptor();
    if (!on) return;
    QDBusMessage call = QDBusMessage::createMethodCall(
        QStringLiteral("org.freedesktop.login1"), QStringLiteral("/org/freedesktop/login1"),
        QStringLiteral("org.freedesktop.login1.Manager"), QStringLiteral("Inhibit"));
    call << QStringLiteral("sleep:idle") << QStringLiteral("Norvo Recovery")
         << QStringLiteral("A drive is being searched for lost files") << QStringLiteral("block");
    // The window must not wait long for a bus that does not answer.
    constexpr int patience = 1000;  // milliseconds
    const QDBusReply<QDBusUnixFileDescriptor> reply =
        QDBusConnection::systemBus().call(call, QDBus::Block, patience);
    if (reply.isValid()) lock_ = reply.value();
  }

 private:
  QDBusUnixFileDescriptor lock_;
};

}  // namespace

std::unique_ptr<SleepGuard> make_system_sleep_guard() {
  return std::make_unique<LoginSleepGuard>();
}

}  // namespace norvo
