#include "platform/linux/panel/AssistiveTechnology.h"

#include <QDBusArgument>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCall>
#include <QDBusServiceWatcher>
#include <QVariantMap>
#include <utility>

#include "platform/linux/menus/AtSpiBus.h"
#include "platform/linux/system/SessionBus.h"

namespace pellar {
namespace {

// The session says that some program wants to read others. That it does because we had programs come to the
// bus whose menus we work is no reason to go there ourselves.
bool someoneListens(const QVariantMap& status) {
  return status.value(QStringLiteral("ScreenReaderEnabled")).toBool() ||
         (status.value(QStringLiteral("IsEnabled")).toBool() && !AtSpiBus::hasInvited());
}

}  // namespace

AssistiveTechnology::AssistiveTechnology(std::function<void(bool)> onChanged)
    : onChanged_(std::move(onChanged)) {
  changed_.setSingleShot(true);
  changed_.setInterval(0);
  QObject::connect(&changed_, &QTimer::timeout, &answers_, [this] { ask(); });
  // The connection that the status item has, too.
  auto session = QDBusConnection::sessionBus();
  auto owner = std::make_unique<QDBusServiceWatcher>(AtSpiBus::launcher, session,
                                                     QDBusServiceWatcher::WatchForOwnerChange);
  QObject::connect(owner.get(), &QDBusServiceWatcher::serviceOwnerChanged, &changed_,
                   [this] { changed_.start(); });
  service_ = std::move(owner);
  session.connect(AtSpiBus::launcher, AtSpiBus::launcherPath, AtSpiBus::propertiesInterface,
                  QStringLiteral("PropertiesChanged"), &changed_, SLOT(start()));
  ask();
}

AssistiveTechnology::~AssistiveTechnology() = default;

void AssistiveTechnology::ask() {
  auto question = QDBusMessage::createMethodCall(AtSpiBus::launcher, AtSpiBus::launcherPath,
                                                 AtSpiBus::propertiesInterface, QStringLiteral("GetAll"));
  question.setArguments({QStringLiteral("org.a11y.Status")});
  question.setAutoStartService(false);
  SessionBus::whenAnswered(
      QDBusConnection::sessionBus().asyncCall(question, SessionBus::untilAnswered), &answers_,
      [this](const QDBusMessage& answer) {
        const auto values = answer.type() == QDBusMessage::ReplyMessage ? answer.arguments() : QVariantList();
        tell(!values.isEmpty() && someoneListens(qdbus_cast<QVariantMap>(values.first())));
      });
}

void AssistiveTechnology::tell(bool listening) {
  if (std::exchange(listening_, listening) != listening) onChanged_(listening);
}

}  // namespace pellar
