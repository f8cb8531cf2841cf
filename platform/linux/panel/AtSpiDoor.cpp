#include "platform/linux/panel/AtSpiDoor.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QVariantList>

namespace pellar {
namespace {

// No call of the accessibility protocol has more.
constexpr qsizetype mostArguments = 8;

}  // namespace

QString AtSpiDoor::introspect(const QString& path) const {
  return toolkit_ ? toolkit_->introspect(path) : QString();
}

bool AtSpiDoor::handleMessage(const QDBusMessage& message, const QDBusConnection& connection) {
  // What acts has to be asked for properly.
  const bool acts = message.member() == QLatin1String("DoAction");
  if (!toolkit_ || (acts && message.signature() != QLatin1String("i"))) return false;
  QVariantList arguments = message.arguments();
  while (arguments.size() < mostArguments) arguments << QVariant();
  QDBusMessage whole = message;
  whole.setArguments(arguments);
  return toolkit_->handleMessage(whole, connection);
}

}  // namespace pellar
