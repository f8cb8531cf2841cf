#include "platform/linux/desktop/DesktopNotifications.h"

#include <QCoreApplication>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCall>
#include <QString>
#include <QVariantMap>
#include <chrono>
#include <utility>

#include "platform/MainLoop.h"
#include "platform/linux/system/SessionBus.h"

namespace pellar {
namespace {

using namespace std::chrono_literals;

constexpr int ownTimeToLive = -1;

// Desktops lay out all of a text, which may be as long as an answer of the web site.
constexpr qsizetype longestText = 1000;

QString shown(const std::string& text) {
  const QString whole = QString::fromStdString(text);
  if (whole.size() <= longestText) return whole;
  return whole.left(longestText / 2) + QChar(0x2026) + whole.right(longestText / 2);
}

QString nextConnectionName() {
  static int last = 0;
  return QStringLiteral("pellar-notifications-%1").arg(++last);
}

}  // namespace

void DesktopNotifications::call(const QString& method, const QVariantList& arguments,
                                std::function<void(const QDBusMessage& answer)> receive) {
  const auto failed = QDBusMessage::createError(QDBusError::NoServer, QStringLiteral("no session bus"));
  const auto address = SessionBus::answering(300ms);
  if (!address) return receive(failed);
  // For this call alone: a connection that stays would take part in the bus's traffic.
  const QString name = nextConnectionName();
  const QDBusConnection bus = QDBusConnection::connectToBus(*address, name);
  // A call on such a connection would never end.
  if (!bus.isConnected()) {
    QDBusConnection::disconnectFromBus(name);
    return receive(failed);
  }
  auto message = QDBusMessage::createMethodCall(QStringLiteral("org.freedesktop.Notifications"),
                                                QStringLiteral("/org/freedesktop/Notifications"),
                                                QStringLiteral("org.freedesktop.Notifications"), method);
  message.setArguments(arguments);
  SessionBus::whenAnswered(bus.asyncCall(message, SessionBus::answerMilliseconds),
                           QCoreApplication::instance(),
                           [name, receive = std::move(receive)](const QDBusMessage& answer) {
                             QDBusConnection::disconnectFromBus(name);
                             receive(answer);
                           });
}

Subscription DesktopNotifications::requestAuthorization(std::function<void(bool granted)> answer) {
  auto waiting = std::make_shared<std::function<void(bool)>>(std::move(answer));
  Subscription subscription([weak = std::weak_ptr(waiting)] {
    if (const auto alive = weak.lock()) *alive = nullptr;
  });
  loop_.post([waiting] {
    if (!*waiting) return;
    call(QStringLiteral("GetServerInformation"), {}, [waiting](const QDBusMessage& reply) {
      const auto tell = std::exchange(*waiting, nullptr);
      if (tell) tell(reply.type() == QDBusMessage::ReplyMessage);
    });
  });
  return subscription;
}

void DesktopNotifications::add(const UserNotification& notification) {
  const auto before = shown_->find(notification.identifier);
  const unsigned replaced = before == shown_->end() ? 0 : before->second;
  // The body may carry markup there.
  const QString body = shown(notification.body).toHtmlEscaped();
  call(QStringLiteral("Notify"),
       {QStringLiteral("Pellar"), replaced, QString(), shown(notification.title), body, QStringList(),
        QVariantMap(), ownTimeToLive},
       [weak = std::weak_ptr(shown_), identifier = notification.identifier](const QDBusMessage& reply) {
         const auto shown = weak.lock();
         if (shown && !reply.arguments().isEmpty()) (*shown)[identifier] = reply.arguments().first().toUInt();
       });
}

}  // namespace pellar
