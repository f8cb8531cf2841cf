// Stands in for a desktop's tray that shows status-notifier items, as several desktops' do: it is told what
// to do with the one item that comes, line by line on standard input.
//   item                 what the item says of itself
//   rows                 its menu, submenus indented
//   choose TITLE[/TITLE] chooses an item of it
//   activate             a click on the icon
// Each answer ends with the line "end".

#include <QCoreApplication>
#include <QDBusArgument>
#include <QDBusConnection>
#include <QDBusInterface>
#include <QDBusMessage>
#include <QDBusVariant>
#include <QDBusVirtualObject>
#include <QSocketNotifier>
#include <cstdio>
#include <iostream>
#include <string>
#include <vector>

namespace {

constexpr const char* watcherName = "org.kde.StatusNotifierWatcher";

void say(const QString& line) {
  std::printf("%s\n", qUtf8Printable(line));
  std::fflush(stdout);
}

class Watcher : public QDBusVirtualObject {
 public:
  // Programs read the property by what is said here.
  [[nodiscard]] QString introspect(const QString& /*path*/) const override {
    return QStringLiteral(
        "<interface name='org.kde.StatusNotifierWatcher'>"
        "<method name='RegisterStatusNotifierItem'><arg type='s' direction='in'/></method>"
        "<property name='IsStatusNotifierHostRegistered' type='b' access='read'/>"
        "<property name='ProtocolVersion' type='i' access='read'/>"
        "<property name='RegisteredStatusNotifierItems' type='as' access='read'/>"
        "</interface>");
  }

  bool handleMessage(const QDBusMessage& message, const QDBusConnection& connection) override {
    const auto arguments = message.arguments();
    if (message.member() == QLatin1String("RegisterStatusNotifierItem")) {
      item_ = arguments.value(0).toString();
      // Some give their object, some their name.
      if (item_.startsWith(QLatin1Char('/'))) item_ = message.service();
      return connection.send(message.createReply());
    }
    if (message.member() == QLatin1String("Get"))
      return connection.send(message.createReply(QVariant::fromValue(QDBusVariant(property(arguments)))));
    return false;
  }

  [[nodiscard]] QString item() const { return item_; }

 private:
  [[nodiscard]] QVariant property(const QVariantList& arguments) const {
    const auto name = arguments.value(1).toString();
    if (name == QLatin1String("IsStatusNotifierHostRegistered")) return true;
    if (name == QLatin1String("ProtocolVersion")) return 0;
    return QStringList(item_);
  }

  QString item_;
};

// One row of a menu, as com.canonical.dbusmenu tells it.
struct Row {
  int number = 0;
  QVariantMap properties;
  std::vector<Row> children;

  [[nodiscard]] QString title() const {
    const QString label = properties.value(QStringLiteral("label")).toString();
    QString text;
    for (qsizetype at = 0; at < label.size(); ++at) {
      // An underscore marks the key that follows it, and two are one that is shown.
      if (label[at] == QLatin1Char('_') && ++at == label.size()) break;
      text += label[at];
    }
    return text;
  }
};

Row rowFrom(const QDBusArgument& argument) {
  Row row;
  argument.beginStructure();
  argument >> row.number >> row.properties;
  argument.beginArray();
  while (!argument.atEnd()) {
    QDBusVariant child;
    argument >> child;
    row.children.push_back(rowFrom(child.variant().value<QDBusArgument>()));
  }
  argument.endArray();
  argument.endStructure();
  return row;
}

class Item {
 public:
  Item(const QString& service, const QDBusConnection& bus)
      : item_(service, QStringLiteral("/StatusNotifierItem"), QStringLiteral("org.kde.StatusNotifierItem"),
              bus),
        menu_(service, QStringLiteral("/MenuBar"), QStringLiteral("com.canonical.dbusmenu"), bus) {}

  void tellItem() {
    for (const char* name : {"Category", "Id", "Status"})
      say(QLatin1String(name) + QLatin1String(": ") + item_.property(name).toString());
    tellIcon();
  }
  void tellRows() { tell(open().children, QString()); }
  void choose(const QStringList& titles) {
    Row row = open();
    for (const auto& title : titles) {
      const auto found = std::find_if(row.children.begin(), row.children.end(),
                                      [&](const Row& each) { return each.title() == title; });
      if (found == row.children.end()) return say(QLatin1String("no such item: ") + title);
      // A row is not to outlive the one it is part of.
      Row next = *found;
      row = std::move(next);
    }
    menu_.call(QStringLiteral("Event"), row.number, QStringLiteral("clicked"),
               QVariant::fromValue(QDBusVariant(QString())), 0U);
  }
  void activate() { item_.call(QStringLiteral("Activate"), 0, 0); }

 private:
  void tellIcon() {
    QDBusInterface properties(item_.service(), item_.path(),
                              QStringLiteral("org.freedesktop.DBus.Properties"), item_.connection());
    const auto reply =
        properties.call(QStringLiteral("Get"), item_.interface(), QStringLiteral("IconPixmap"));
    const auto icons = reply.arguments().value(0).value<QDBusVariant>().variant().value<QDBusArgument>();
    QString sizes;
    icons.beginArray();
    while (!icons.atEnd()) {
      int width = 0;
      int height = 0;
      QByteArray pixels;
      icons.beginStructure();
      icons >> width >> height >> pixels;
      icons.endStructure();
      // Four bytes a pixel, and not all of them alike.
      if (pixels.size() == 4 * width * height && pixels.count(pixels.at(0)) < pixels.size())
        sizes += QStringLiteral(" %1x%2").arg(width).arg(height);
    }
    icons.endArray();
    say(QLatin1String("Icon:") + sizes);
  }
  Row open() {
    menu_.call(QStringLiteral("AboutToShow"), 0);
    const auto reply = menu_.call(QStringLiteral("GetLayout"), 0, -1, QStringList());
    if (reply.type() != QDBusMessage::ReplyMessage) {
      say(reply.errorMessage());
      return {};
    }
    return rowFrom(reply.arguments().value(1).value<QDBusArgument>());
  }
  static void tell(const std::vector<Row>& rows, const QString& indent) {
    for (const auto& row : rows) {
      const bool checked = row.properties.value(QStringLiteral("toggle-state")).toInt() == 1;
      const bool separator = row.properties.value(QStringLiteral("type")) == QLatin1String("separator");
      const bool submenu =
          row.properties.value(QStringLiteral("children-display")) == QLatin1String("submenu");
      say(indent + (separator ? QStringLiteral("---")
                              : (checked ? QStringLiteral("✓ ") : QString()) + row.title() +
                                    (submenu ? QStringLiteral(" ▸") : QString())));
      tell(row.children, indent + QLatin1String("  "));
    }
  }

  QDBusInterface item_;
  QDBusInterface menu_;
};

void carryOut(const QString& command, Item& item) {
  const QString verb = command.section(QLatin1Char(' '), 0, 0);
  if (verb == QLatin1String("item")) item.tellItem();
  if (verb == QLatin1String("rows")) item.tellRows();
  if (verb == QLatin1String("choose"))
    item.choose(command.section(QLatin1Char(' '), 1).split(QLatin1Char('/')));
  if (verb == QLatin1String("activate")) item.activate();
  say(QStringLiteral("end"));
}

}  // namespace

int main(int argc, char** argv) {
  const QCoreApplication application(argc, argv);
  auto bus = QDBusConnection::sessionBus();
  Watcher watcher;
  if (!bus.registerVirtualObject(QStringLiteral("/StatusNotifierWatcher"), &watcher) ||
      !bus.registerService(QLatin1String(watcherName)))
    return 1;
  say(QStringLiteral("ready"));
  QSocketNotifier input(0, QSocketNotifier::Read);
  QObject::connect(&input, &QSocketNotifier::activated, [&] {
    std::string line;
    if (!std::getline(std::cin, line)) return QCoreApplication::quit();
    if (watcher.item().isEmpty()) {
      say(QStringLiteral("no item\nend"));
      return;
    }
    Item item(watcher.item(), bus);
    carryOut(QString::fromStdString(line), item);
  });
  return QCoreApplication::exec();
}
