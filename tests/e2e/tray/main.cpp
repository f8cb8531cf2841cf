// Stands in for a desktop's tray that shows status-notifier items, as several desktops' do: it is told what
// to do with the one item that comes, line by line on standard input.
//   item                 what the item says of itself
//   rows                 its menu, submenus indented
//   choose TITLE[/TITLE] chooses an item of it
//   activate             a click on the icon
//   pester COUNT         that many calls as no tray should make them, always the same ones
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
#include <random>
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

// Makes calls up: of members that are there and that are not, with numbers of no row and of rows, and with
// values of any kind. It never chooses a row.
class Pest {
 public:
  [[nodiscard]] int below(int end) { return static_cast<int>(generator_() % static_cast<unsigned>(end)); }

  QString menuMember() {
    static const char* const members[] = {
        "AboutToShow",        "AboutToShowGroup", "Event",       "EventGroup",
        "GetGroupProperties", "GetLayout",        "GetProperty", "Nothing"};
    return QLatin1String(members[below(8)]);
  }
  QString itemMember() {
    static const char* const members[] = {"Scroll", "XAyatanaSecondaryActivate", "ProvideXdgActivationToken",
                                          ""};
    const auto member = QLatin1String(members[below(4)]);
    return member.isEmpty() ? QStringLiteral("Nothing") : QString(member);
  }
  QVariantList arguments(const QString& member) {
    QVariantList result;
    if (below(4) == 0) {
      for (int count = below(5); count > 0; --count) result.append(anything());
      return result;
    }
    if (member == QLatin1String("AboutToShow")) return {number()};
    if (member == QLatin1String("AboutToShowGroup")) return {QVariant::fromValue(numbers())};
    if (member == QLatin1String("Event"))
      return {number(), event(), QVariant::fromValue(QDBusVariant(anything())), 0U};
    if (member == QLatin1String("GetGroupProperties"))
      return {QVariant::fromValue(numbers()), QStringList{text()}};
    if (member == QLatin1String("GetLayout")) return {number(), below(9) - 4, QStringList{text()}};
    if (member == QLatin1String("GetProperty")) return {number(), text()};
    return {number(), text()};
  }

 private:
  int number() {
    static constexpr int odd[] = {-1, 0x7fffffff, -0x7fffffff - 1, 1000000};
    return below(3) == 0 ? odd[below(4)] : below(60);
  }
  QList<int> numbers() {
    QList<int> result;
    for (int count = below(6); count > 0; --count) result.append(number());
    return result;
  }
  QString event() {
    static const char* const events[] = {"opened", "closed", "hovered", "", "x-event"};
    return QLatin1String(events[below(5)]);
  }
  QString text() {
    if (below(4) == 0) return QString(below(5000), QChar(u'ä'));
    static const char* const texts[] = {"label", "children-display", "icon-data", "", "visible"};
    return QLatin1String(texts[below(5)]);
  }
  QVariant anything() {
    switch (below(6)) {
      case 0:
        return number();
      case 1:
        return QVariant::fromValue(numbers());
      case 2:
        return below(2) == 0;
      case 3:
        return QVariant::fromValue(QDBusVariant(text()));
      case 4:
        return QByteArray(below(100), 'x');
      default:
        return text();
    }
  }

  std::mt19937 generator_{1741079727};
};

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
  void pester(int count) {
    Pest pest;
    for (; count > 0; --count) {
      const bool ofMenu = pest.below(4) > 0;
      const QDBusInterface& object = ofMenu ? menu_ : item_;
      auto message = QDBusMessage::createMethodCall(object.service(), object.path(), object.interface(),
                                                    ofMenu ? pest.menuMember() : pest.itemMember());
      message.setArguments(pest.arguments(message.member()));
      object.connection().send(message);
    }
    // When this is answered all that was sent before has been dealt with.
    menu_.call(QStringLiteral("AboutToShow"), 0);
  }

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
  if (verb == QLatin1String("pester")) item.pester(command.section(QLatin1Char(' '), 1).toInt());
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
