// Stands in for a desktop's notifications: says on standard output that it is ready, and then each one it is
// told to show, "number: title | text". With the argument "none" nobody shows any.

#include <QCoreApplication>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusVirtualObject>
#include <cstdio>
#include <cstring>

namespace {

class Notifications : public QDBusVirtualObject {
 public:
  [[nodiscard]] QString introspect(const QString& /*path*/) const override { return {}; }

  bool handleMessage(const QDBusMessage& message, const QDBusConnection& connection) override {
    if (message.member() == QLatin1String("GetServerInformation")) {
      const QString name = QStringLiteral("Notifications");
      return connection.send(message.createReply({name, name, QStringLiteral("1"), QStringLiteral("1.2")}));
    }
    const auto arguments = message.arguments();
    if (message.member() != QLatin1String("Notify") || arguments.size() != 8) return false;
    const unsigned replaced = arguments[1].toUInt();
    const unsigned number = replaced != 0 ? replaced : ++last_;
    std::printf("%u: %s | %s\n", number, qUtf8Printable(arguments[3].toString()),
                qUtf8Printable(arguments[4].toString()));
    std::fflush(stdout);
    return connection.send(message.createReply(number));
  }

 private:
  unsigned last_ = 0;
};

}  // namespace

int main(int argc, char** argv) {
  const QCoreApplication application(argc, argv);
  auto bus = QDBusConnection::sessionBus();
  Notifications notifications;
  const bool shown = argc < 2 || std::strcmp(argv[1], "none") != 0;
  if (shown &&
      (!bus.registerVirtualObject(QStringLiteral("/org/freedesktop/Notifications"), &notifications) ||
       !bus.registerService(QStringLiteral("org.freedesktop.Notifications"))))
    return 1;
  std::puts("ready");
  std::fflush(stdout);
  return QCoreApplication::exec();
}
