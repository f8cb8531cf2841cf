#include "platform/linux/menus/AtSpiBus.h"

#include <QDBusError>
#include <QDBusMessage>
#include <QDBusVariant>
#include <QStringView>
#include <algorithm>
#include <string>

#include "core/Log.h"
#include "platform/linux/system/SessionBus.h"

namespace pellar {
namespace {

using namespace std::chrono_literals;

constexpr auto retryPause = 10s;

const QString sessionConnection = QStringLiteral("pellar-accessibility-session");
const QString accessibilityConnection = QStringLiteral("pellar-accessibility");
const QString statusInterface = QStringLiteral("org.a11y.Status");

int millisecondsUntil(AtSpiBus::Deadline deadline) {
  const auto left = std::chrono::ceil<std::chrono::milliseconds>(deadline - AtSpiBus::Clock::now());
  return static_cast<int>(std::max<std::chrono::milliseconds::rep>(left.count(), 1));
}

bool isWord(QStringView text) {
  return !text.isEmpty() && std::ranges::all_of(text, [](QChar each) {
    return each.unicode() < 128 && (each.isLetterOrNumber() || each == QLatin1Char('_'));
  });
}

// Objects are named by what other programs say, and the bus library ends the process over a name that cannot
// be.
bool canBeNamed(const AtSpiReference& object) {
  constexpr qsizetype longestName = 255;
  const QStringView name(object.bus);
  const bool isUnique = name.startsWith(QLatin1Char(':'));
  const auto parts = name.mid(isUnique ? 1 : 0).split(QLatin1Char('.'));
  const bool isName = parts.size() > 1 && std::ranges::all_of(parts, [&](QStringView part) {
                        const QString word = part.toString().replace(QLatin1Char('-'), QLatin1Char('_'));
                        return isWord(word) && (isUnique || !word.front().isDigit());
                      });
  const QStringView path(object.path);
  const auto steps = path.mid(1).split(QLatin1Char('/'));
  const bool isPath =
      path.startsWith(QLatin1Char('/')) && (path.size() == 1 || std::ranges::all_of(steps, isWord));
  return isName && name.size() <= longestName && isPath;
}

QDBusPendingCall sendTo(const QDBusConnection& connection, const AtSpiReference& object,
                        const QString& interface, const QString& method, const QVariantList& arguments,
                        AtSpiBus::Deadline deadline) {
  if (!canBeNamed(object)) {
    return QDBusPendingCall::fromError(
        QDBusError(QDBusError::InvalidArgs, QStringLiteral("no name of an object")));
  }
  auto message = QDBusMessage::createMethodCall(object.bus, object.path, interface, method);
  message.setArguments(arguments);
  return connection.asyncCall(message, millisecondsUntil(deadline));
}

std::optional<bool> status(const QDBusConnection& session, const QString& property,
                           AtSpiBus::Deadline deadline) {
  const auto answer = AtSpiBus::receive(sendTo(session, {AtSpiBus::launcher, AtSpiBus::launcherPath},
                                               AtSpiBus::propertiesInterface, QStringLiteral("Get"),
                                               {statusInterface, property}, deadline));
  if (!answer || answer->isEmpty()) return std::nullopt;
  return answer->first().value<QDBusVariant>().variant().toBool();
}

void setEnabled(const QDBusConnection& session, bool enabled, AtSpiBus::Deadline deadline) {
  const QVariantList arguments{statusInterface, QStringLiteral("IsEnabled"),
                               QVariant::fromValue(QDBusVariant(enabled))};
  // Whether it took is seen by who comes to the bus.
  static_cast<void>(
      AtSpiBus::receive(sendTo(session, {AtSpiBus::launcher, AtSpiBus::launcherPath},
                               AtSpiBus::propertiesInterface, QStringLiteral("Set"), arguments, deadline)));
}

}  // namespace

AtSpiBus::~AtSpiBus() {
  close();
}

void AtSpiBus::close() {
  if (connection_.has_value()) QDBusConnection::disconnectFromBus(accessibilityConnection);
  if (session_.has_value()) QDBusConnection::disconnectFromBus(sessionConnection);
  connection_.reset();
  session_.reset();
}

bool AtSpiBus::connect(Deadline deadline) {
  if (connection_ && connection_->isConnected()) return true;
  if (failedAt_ && Clock::now() - *failedAt_ < retryPause) return false;
  close();
  failedAt_ = Clock::now();
  const auto fail = [this](const std::string& why) {
    close();
    if (!std::exchange(reported_, true)) Log::write("the menus of other programs cannot be read: " + why);
    return false;
  };
  const auto sessionAddress = SessionBus::address();
  if (!sessionAddress) return fail("there is no session bus");
  if (!SessionBus::answers(*sessionAddress, deadline)) return fail("the session bus does not answer");
  session_ = QDBusConnection::connectToBus(*sessionAddress, sessionConnection);
  if (!session_->isConnected()) return fail("there is no session bus");
  const auto found = address(deadline);
  if (!found) return fail("there is no accessibility bus");
  if (!SessionBus::answers(*found, deadline)) return fail("the accessibility bus does not answer");
  connection_ = QDBusConnection::connectToBus(*found, accessibilityConnection);
  if (!connection_->isConnected()) return fail("the accessibility bus refuses a connection");
  failedAt_.reset();
  return true;
}

std::optional<QString> AtSpiBus::address(Deadline deadline) {
  const auto answer = receive(
      sendTo(*session_, {launcher, launcherPath}, launcher, QStringLiteral("GetAddress"), {}, deadline));
  if (!answer || answer->isEmpty()) return std::nullopt;
  QString address = answer->first().toString();
  return address.isEmpty() ? std::nullopt : std::optional(std::move(address));
}

QDBusPendingCall AtSpiBus::send(const AtSpiReference& object, const QString& interface, const QString& method,
                                const QVariantList& arguments, Deadline deadline) const {
  return sendTo(*connection_, object, interface, method, arguments, deadline);
}

std::optional<QVariantList> AtSpiBus::receive(QDBusPendingCall call) {
  call.waitForFinished();
  if (call.isError()) return std::nullopt;
  return call.reply().arguments();
}

Performed AtSpiBus::performed(const QDBusPendingCall& call) {
  if (!call.isError()) return Performed::done;
  const auto type = call.error().type();
  const bool late =
      type == QDBusError::NoReply || type == QDBusError::Timeout || type == QDBusError::TimedOut;
  return late ? Performed::unanswered : Performed::refused;
}

QDBusPendingCall AtSpiBus::sendOnSession(const AtSpiReference& object, const QString& interface,
                                         const QString& method, const QVariantList& arguments,
                                         Deadline deadline) const {
  return sendTo(*session_, object, interface, method, arguments, deadline);
}

bool AtSpiBus::enable(Deadline deadline) {
  if (enabled_ || !session_ || status(*session_, QStringLiteral("IsEnabled"), deadline).value_or(true))
    return false;
  enabled_ = true;
  invited = true;
  setEnabled(*session_, true, deadline);
  return true;
}

void AtSpiBus::disable(Deadline deadline) {
  if (!std::exchange(enabled_, false) || !session_ || !session_->isConnected()) return;
  // A screen reader that was started meanwhile needs it.
  if (status(*session_, QStringLiteral("ScreenReaderEnabled"), deadline).value_or(true)) return;
  setEnabled(*session_, false, deadline);
  invited = false;
}

}  // namespace pellar
