#include "platform/linux/panel/AtSpiBridge.h"

#include <QAccessible>
#include <QCoreApplication>
#include <QDBusArgument>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusObjectPath>
#include <QDBusPendingCall>
#include <QDBusServiceWatcher>
#include <QEvent>
#include <QMetaObject>
#include <array>
#include <chrono>
#include <optional>
#include <utility>

#include "platform/linux/menus/AtSpiBus.h"
#include "platform/linux/system/SessionBus.h"
#include "platform/linux/system/TemporaryVariable.h"

namespace pellar {
namespace {

using namespace std::chrono_literals;

// Of a bus that somebody would still be glad of.
constexpr auto longestHang = 1min;

const QString noBus = QStringLiteral("disabled:");

// Names of the toolkit.
const QString bridgeConnection = QStringLiteral("a11y");
const QString cachePath = QStringLiteral("/org/a11y/atspi/cache");
constexpr const char* connectSlot = "connectA11yBus(QString)";

// Names of the protocol.
const QString objectsPath = QStringLiteral("/org/a11y/atspi/accessible");
const QString rootPath = QStringLiteral("/org/a11y/atspi/accessible/root");
const QString registryPath = QStringLiteral("/org/a11y/atspi/registry");

// What it says of those who listen, and where the toolkit hears that.
constexpr std::array<std::pair<const char*, const char*>, 2> listenerSignals{
    {{"EventListenerRegistered", SLOT(eventListenerRegistered(QString, QString))},
     {"EventListenerDeregistered", SLOT(eventListenerDeregistered(QString, QString))}}};

// Finds the object of the toolkit that connects it, while that is made.
class Search final : public QObject {
 public:
  Search() { QCoreApplication::instance()->installEventFilter(this); }
  QObject* found = nullptr;

  bool eventFilter(QObject* receiver, QEvent* event) override {
    if (event->type() == QEvent::ChildAdded && receiver->metaObject()->indexOfSlot(connectSlot) >= 0)
      found = receiver;
    return false;
  }
};

// Keeps from an object what it asked the session for.
class Silence final : public QObject {
 public:
  explicit Silence(QObject* object) : QObject(object) { object->installEventFilter(this); }
  bool eventFilter(QObject* /*receiver*/, QEvent* event) override {
    return event->type() == QEvent::MetaCall;
  }
};

// The toolkit's object that connects it to the bus; null where there is no session.
QObject* makeAsleep() {
  const bool session = SessionBus::answering(300ms) && QDBusConnection::sessionBus().isConnected();
  // What it connects to meanwhile is the connection of this name, which there is.
  QDBusConnection::connectToBus(noBus, bridgeConnection);
  const TemporaryVariable address("AT_SPI_BUS_ADDRESS",
                                  session ? std::nullopt : std::optional(noBus.toUtf8()));
  // It then does not wait for the session to say whether somebody listens.
  const TemporaryVariable asked("QT_LINUX_ACCESSIBILITY_ALWAYS_ON", "1");
  const Search search;
  static_cast<void>(QAccessible::isActive());  // whoever asks that first makes the bridge
  if (search.found == nullptr) return nullptr;
  new Silence(search.found);
  if (auto* const watcher = search.found->findChild<QDBusServiceWatcher*>())
    QObject::disconnect(watcher, nullptr, search.found, nullptr);
  return search.found;
}

void setActive(QObject* toolkit, bool active) {
  if (QAccessible::isActive() != active)
    QMetaObject::invokeMethod(toolkit, "enabledChanged", Qt::DirectConnection, Q_ARG(bool, active));
}

QDBusMessage registryCall(const QString& object, const QString& interface, const QString& method) {
  return QDBusMessage::createMethodCall(AtSpiBus::registry, object, interface, method);
}

}  // namespace

AtSpiBridge::AtSpiBridge(MainLoop& loop) : loop_(loop) {
  static QObject* const made = makeAsleep();
  toolkit = made;
  listeners_.setSingleShot(true);
  QObject::connect(&listeners_, &QTimer::timeout, &answers_, [this] { followListeners(); });
}

void AtSpiBridge::wake() {
  wanted_ = true;
  if (!canWake()) return;
  if (!isIntroduced()) return findBus();
  setActive(toolkit, true);
  followListeners();
}

void AtSpiBridge::sleep() {
  wanted_ = false;
  if (!canWake()) return;
  setActive(toolkit, false);
  // What asks those who listen about each key that is typed here.
  if (!door_.toolkit()) return;
  for (QObject* const filter : door_.toolkit()->children())
    QCoreApplication::instance()->removeEventFilter(filter);
}

bool AtSpiBridge::isIntroduced() const {
  return introduced_ && QDBusConnection(bridgeConnection).isConnected();
}

void AtSpiBridge::findBus() {
  auto question = QDBusMessage::createMethodCall(AtSpiBus::launcher, AtSpiBus::launcherPath,
                                                 AtSpiBus::launcher, QStringLiteral("GetAddress"));
  question.setAutoStartService(false);
  receive(QDBusConnection::sessionBus().asyncCall(question, SessionBus::untilAnswered),
          [this](const QDBusMessage& answer) {
            if (wanted_ && !answer.arguments().isEmpty())
              connectWhenAnswered(answer.arguments().first().toString());
          });
}

void AtSpiBridge::connectWhenAnswered(const QString& address) {
  // The loop outlives the thread's tasks unless one hangs to the end of the program.
  thread_.post([this, address, alive = alive_.watch(), &loop = loop_] {
    if (!SessionBus::answers(address, SideThread::Clock::now() + longestHang) || !alive) return;
    loop.post([this, address, alive] {
      if (alive && wanted_) connectTo(address);
    });
  });
}

void AtSpiBridge::connectTo(const QString& address) {
  if (!QDBusConnection(bridgeConnection).isConnected()) {
    QDBusConnection::disconnectFromBus(bridgeConnection);
    introduced_ = false;
    auto bus = QDBusConnection::connectToBus(address, bridgeConnection);
    if (!bus.isConnected()) return;
    // In the toolkit's place from the start: no call reaches it around the door.
    bus.registerVirtualObject(objectsPath, &door_, QDBusConnection::SubPath);
  }
  // The toolkit waits for what it asks the registry.
  whenRegistryAnswers([this, address] {
    if (wanted_ && !isIntroduced()) introduce(address);
  });
}

void AtSpiBridge::introduce(const QString& address) {
  QDBusConnection bus(bridgeConnection);
  // It takes the connection of its name, and wakes up.
  QMetaObject::invokeMethod(toolkit, "connectA11yBus", Qt::DirectConnection, Q_ARG(QString, address));
  setActive(toolkit, true);
  if (door_.toolkit() == nullptr) {
    const auto* const made = bus.objectRegisteredAt(cachePath);
    if (made == nullptr || made->parent() == nullptr) return;
    door_.setToolkit(made->parent()->findChild<QDBusVirtualObject*>());
  } else {
    introduceAgain();
  }
  introduced_ = true;
  for (const auto& [signal, slot] : listenerSignals) {
    const QString name = QString::fromLatin1(signal);
    bus.disconnect(AtSpiBus::registry, registryPath, AtSpiBus::registry, name, door_.toolkit(), slot);
    bus.connect(AtSpiBus::registry, registryPath, AtSpiBus::registry, name, &listeners_, SLOT(start()));
  }
}

// What the toolkit did on the first bus that it was on.
void AtSpiBridge::introduceAgain() {
  QDBusConnection bus(bridgeConnection);
  QObject* const bridge = door_.toolkit()->parent();
  for (QObject* const child : bridge->children()) {
    if (child->inherits("QSpiDBusCache"))
      bus.registerObject(cachePath, child, QDBusConnection::ExportAdaptors);
  }
  QDBusArgument self;
  self.beginStructure();
  self << bus.baseService() << QDBusObjectPath(rootPath);
  self.endStructure();
  auto call = registryCall(rootPath, QStringLiteral("org.a11y.atspi.Socket"), QStringLiteral("Embed"));
  call << QVariant::fromValue(self);
  bus.send(call);
  followListeners();
}

// It asks the registry itself, and waits, for each that comes or goes.
void AtSpiBridge::followListeners() {
  if (!wanted_) return;
  whenRegistryAnswers([this] {
    if (!wanted_) return;
    QMetaObject::invokeMethod(door_.toolkit(), "eventListenerRegistered", Qt::DirectConnection,
                              Q_ARG(QString, QString()), Q_ARG(QString, QString()));
  });
}

void AtSpiBridge::whenRegistryAnswers(const std::function<void()>& then) {
  const auto call = registryCall(registryPath, AtSpiBus::registry, QStringLiteral("GetRegisteredEvents"));
  receive(QDBusConnection(bridgeConnection).asyncCall(call, SessionBus::untilAnswered),
          [then](const QDBusMessage& /*answer*/) { then(); });
}

void AtSpiBridge::receive(const QDBusPendingCall& call, Receive receive) {
  SessionBus::whenAnswered(call, &answers_, [receive = std::move(receive)](const QDBusMessage& answer) {
    if (answer.type() == QDBusMessage::ReplyMessage) receive(answer);
  });
}

}  // namespace pellar
