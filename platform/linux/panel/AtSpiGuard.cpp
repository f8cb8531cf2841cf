#include "platform/linux/panel/AtSpiGuard.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusVirtualObject>
#include <QPointer>
#include <QVariantList>

namespace pellar {
namespace {

const QString connectionName = QStringLiteral("a11y");  // the toolkit's
const QString objects = QStringLiteral("/org/a11y/atspi/accessible");

// No call of the accessibility protocol has more.
constexpr qsizetype mostArguments = 8;

}  // namespace

class AtSpiGuard::Door final : public QDBusVirtualObject {
 public:
  explicit Door(QDBusVirtualObject* toolkit) : toolkit_(toolkit) {}

  [[nodiscard]] QString introspect(const QString& path) const override {
    return toolkit_ ? toolkit_->introspect(path) : QString();
  }
  bool handleMessage(const QDBusMessage& message, const QDBusConnection& connection) override {
    // What acts has to be asked for properly.
    const bool acts = message.member() == QLatin1String("DoAction");
    if (!toolkit_ || (acts && message.signature() != QLatin1String("i"))) return false;
    QVariantList arguments = message.arguments();
    while (arguments.size() < mostArguments) arguments << QVariant();
    QDBusMessage whole = message;
    whole.setArguments(arguments);
    return toolkit_->handleMessage(whole, connection);
  }

 private:
  QPointer<QDBusVirtualObject> toolkit_;
};

AtSpiGuard::AtSpiGuard(MainLoop& loop) : loop_(loop) {
  QAccessible::installActivationObserver(this);
}

AtSpiGuard::~AtSpiGuard() {
  QAccessible::removeActivationObserver(this);
}

void AtSpiGuard::accessibilityActiveChanged(bool active) {
  if (!active || door_) return;
  // The toolkit puts its object on the bus right after this, and no call can arrive before the loop runs.
  loop_.post([this, alive = alive_.watch()] {
    if (alive && !door_) stepInFront();
  });
}

void AtSpiGuard::stepInFront() {
  QDBusConnection bus(connectionName);
  auto* const toolkit = qobject_cast<QDBusVirtualObject*>(bus.objectRegisteredAt(objects));
  if (toolkit == nullptr) return;
  bus.unregisterObject(objects);
  door_ = std::make_unique<Door>(toolkit);
  bus.registerVirtualObject(objects, door_.get(), QDBusConnection::SubPath);
}

}  // namespace pellar
