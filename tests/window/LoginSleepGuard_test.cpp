// Sleep is held off by a lock of the login manager: on a bus of the test's own, with a manager of
// the test's own.
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <poll.h>
#include <unistd.h>

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusUnixFileDescriptor>
#include <QDBusVirtualObject>
#include <QFile>
#include <QProcess>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QThread>
#include <mutex>

#include "platform/WindowSystem.h"

namespace norvo {
namespace {

using testing::ElementsAre;
using testing::SizeIs;

constexpr int patience = 30'000;  // milliseconds

// One end of a pipe, whose other end is the lock that was handed out.
class Lock {
 public:
  explicit Lock(int descriptor) : descriptor_(descriptor) {}

  bool is_held() const { return !ends_within(0); }
  bool is_released() const { return ends_within(patience); }

 private:
  bool ends_within(int milliseconds) const {
    pollfd watched{.fd = descriptor_, .events = POLLIN, .revents = 0};
    return poll(&watched, 1, milliseconds) == 1 && (watched.revents & POLLHUP) != 0;
  }
  int descriptor_;
};

// Answers on a thread of its own: who asks for a lock waits for it.
class LoginManager : public QDBusVirtualObject {
 public:
  QString introspect(const QString& /*path*/) const override { return {}; }

  bool handleMessage(const QDBusMessage& message, const QDBusConnection& connection) override {
    std::array<int, 2> ends{};
    if (message.member() != "Inhibit" || pipe(ends.data()) != 0) return false;
    // A copy of the end goes out.
    const QDBusUnixFileDescriptor lock(ends[1]);
    close(ends[1]);
    note(message, ends[0]);
    // Last: who has the answer asks what was noted.
    connection.send(message.createReply(QVariant::fromValue(lock)));
    return true;
  }

  std::vector<QString> calls() const {
    const std::scoped_lock guard(mutex_);
    return calls_;
  }
  // Of the last call.
  std::vector<QString> arguments() const {
    const std::scoped_lock guard(mutex_);
    return arguments_;
  }
  std::vector<Lock> locks() const {
    const std::scoped_lock guard(mutex_);
    return locks_;
  }

 private:
  void note(const QDBusMessage& message, int our_end) {
    const std::scoped_lock guard(mutex_);
    calls_.push_back(message.interface() + "." + message.member());
    arguments_.clear();
    for (const QVariant& argument : message.arguments()) arguments_.push_back(argument.toString());
    locks_.emplace_back(our_end);
  }

  mutable std::mutex mutex_;
  std::vector<QString> calls_;
  std::vector<QString> arguments_;
  std::vector<Lock> locks_;
};

// The bus that the program takes for the system's, as long as the test program runs: a process
// connects to the system's bus once.
class Bus {
 public:
  Bus() {
    QFile settings(folder_.filePath("bus.conf"));
    if (!settings.open(QIODevice::WriteOnly)) return;
    settings.write("<busconfig><listen>unix:dir=" + folder_.path().toUtf8() +
                   "</listen><policy context=\"default\"><allow send_destination=\"*\"/>"
                   "<allow receive_sender=\"*\"/>"
                   "<allow own=\"*\"/></policy></busconfig>");
    settings.close();
    daemon_.start("dbus-daemon", {"--nofork", "--nopidfile", "--print-address=1",
                                  "--config-file=" + settings.fileName()});
    if (!daemon_.waitForStarted(patience) || !daemon_.waitForReadyRead(patience)) return;
    address_ = QString::fromUtf8(daemon_.readLine()).trimmed();
    qputenv("DBUS_SYSTEM_BUS_ADDRESS", address_.toUtf8());
  }
  ~Bus() {
    daemon_.kill();
    daemon_.waitForFinished(patience);
  }

  const QString& address() const { return address_; }

 private:
  QTemporaryDir folder_;
  QProcess daemon_;
  QString address_;
};

class LoginSleepGuardTest : public testing::Test {
 protected:
  static void SetUpTestSuite() {
    if (!QStandardPaths::findExecutable("dbus-daemon").isEmpty()) bus = new Bus;
  }
  static void TearDownTestSuite() {
    delete bus;
    bus = nullptr;
  }

  void SetUp() override {
    if (bus == nullptr) GTEST_SKIP() << "dbus-daemon is not installed";
    ASSERT_FALSE(bus->address().isEmpty());
    thread_.start();
    manager_.moveToThread(&thread_);
  }
  void TearDown() override {
    if (bus != nullptr) {
      managers_end().unregisterService("org.freedesktop.login1");
      managers_end().unregisterObject("/org/freedesktop/login1");
    }
    thread_.quit();
    thread_.wait();
  }

  // Its connection to the bus, which stays: to close one while answers are on their way ends the
  // process.
  static QDBusConnection managers_end() {
    return QDBusConnection::connectToBus(bus->address(), "manager");
  }

  void start_manager() {
    ASSERT_TRUE(managers_end().registerVirtualObject("/org/freedesktop/login1", &manager_));
    ASSERT_TRUE(managers_end().registerService("org.freedesktop.login1"));
  }

  static Bus* bus;
  LoginManager manager_;
  QThread thread_;
  std::unique_ptr<SleepGuard> guard_ = make_system_sleep_guard();
};

Bus* LoginSleepGuardTest::bus = nullptr;

TEST_F(LoginSleepGuardTest, HoldsSleepOffUntilItIsToldOtherwise) {
  start_manager();
  guard_->hold_off_sleep(true);
  EXPECT_THAT(manager_.calls(), ElementsAre("org.freedesktop.login1.Manager.Inhibit"));
  EXPECT_THAT(manager_.arguments(),
              ElementsAre("sleep:idle", "Norvo Recovery",
                          "A drive is being searched for lost files", "block"));
  ASSERT_THAT(manager_.locks(), SizeIs(1));
  EXPECT_TRUE(manager_.locks()[0].is_held());
  guard_->hold_off_sleep(false);
  EXPECT_TRUE(manager_.locks()[0].is_released());
  EXPECT_THAT(manager_.calls(), SizeIs(1));
}

TEST_F(LoginSleepGuardTest, HoldsOneLockHoweverOftenItIsAsked) {
  start_manager();
  guard_->hold_off_sleep(true);
  guard_->hold_off_sleep(true);
  ASSERT_THAT(manager_.locks(), SizeIs(2));
  EXPECT_TRUE(manager_.locks()[0].is_released());
  EXPECT_TRUE(manager_.locks()[1].is_held());
  guard_.reset();
  EXPECT_TRUE(manager_.locks()[1].is_released());
}

TEST_F(LoginSleepGuardTest, DoesNothingWhereThereIsNoLoginManager) {
  guard_->hold_off_sleep(true);
  guard_->hold_off_sleep(false);
  EXPECT_THAT(manager_.calls(), SizeIs(0));
}

}  // namespace
}  // namespace norvo
