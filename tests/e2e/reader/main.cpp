// A screen reader for the tests: e2e_reader. It does what its standard input says, one command a line, and
// answers each with one line. It ends with its input.
//
//   on, off       tells the session that a screen reader runs, or none; a reader that is on listens
//   announce      tells the session that a screen reader runs, and does not listen yet
//   listen        asks to be told what changes, which is told nowhere else
//   invites       whether the session asks programs to come to the bus, "yes" or "no"
//   address       of the accessibility bus
//   pid PART      the process of the bus's "launcher", of the "bus" itself or of its "registry"
//   name ID       of that process on the bus; "-" when it is not connected
//   programs      the names of those that can be read, with a bar between them
//   read          all that Pellar tells, "role;name;help;states;x,y,width,height" with bars between; "-" for
//                 nothing
//   press NAME    has the first element of that name do what a click does; NAME may be "Parent > Name"
//   menu NAME     has it open its menu
//   keys          listens to the keys that are typed into programs from now on
//   keep NAME     keeps the key of that name from them; no name for none
//   heard         the keys that were pressed so far, with blanks between
//   abuse         calls everything that Pellar tells with values that make no sense, and with none

#include <QCoreApplication>
#include <QDBusArgument>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusMetaType>
#include <QDBusObjectPath>
#include <QDBusVariant>
#include <QDBusVirtualObject>
#include <QMetaObject>
#include <QStringList>
#include <functional>
#include <iostream>
#include <optional>
#include <string>
#include <thread>
#include <utility>

namespace {

const QString accessibleInterface = QStringLiteral("org.a11y.atspi.Accessible");
const QString actionInterface = QStringLiteral("org.a11y.atspi.Action");
const QString componentInterface = QStringLiteral("org.a11y.atspi.Component");
const QString propertiesInterface = QStringLiteral("org.freedesktop.DBus.Properties");
const QString registryName = QStringLiteral("org.a11y.atspi.Registry");
const QString rootPath = QStringLiteral("/org/a11y/atspi/accessible/root");

const QString controllerInterface = QStringLiteral("org.a11y.atspi.DeviceEventController");
const QString driverName = QStringLiteral("org.freedesktop.DBus");

constexpr int answerMilliseconds = 5000;

// A key to listen to, in the protocol: by its code, its symbol or its name. None of them means every key.
struct KeyDefinition {
  int code = 0;
  int symbol = 0;
  QString name;
  int unused = 0;
};
QDBusArgument& operator<<(QDBusArgument& argument, const KeyDefinition& key) {
  argument.beginStructure();
  argument << key.code << key.symbol << key.name << key.unused;
  argument.endStructure();
  return argument;
}
const QDBusArgument& operator>>(const QDBusArgument& argument, KeyDefinition& key) {
  argument.beginStructure();
  argument >> key.code >> key.symbol >> key.name >> key.unused;
  argument.endStructure();
  return argument;
}

// Hears each key before its program does, and may keep it.
class KeyListener final : public QDBusVirtualObject {
 public:
  QString kept;
  QStringList heard;

  [[nodiscard]] QString introspect(const QString& /*path*/) const override { return {}; }
  bool handleMessage(const QDBusMessage& message, const QDBusConnection& connection) override {
    if (message.member() != QLatin1String("NotifyEvent") || message.arguments().isEmpty()) return false;
    constexpr uint press = 0;
    uint kind = press;
    QString name;
    const auto key = message.arguments().first().value<QDBusArgument>();
    key.beginStructure();
    for (bool first = true; !key.atEnd(); first = false) {
      const QVariant value = key.asVariant();
      if (first) kind = value.toUInt();
      if (value.typeId() == QMetaType::QString) name = value.toString();
    }
    if (kind == press) heard << name;
    return connection.send(message.createReply(!name.isEmpty() && name == kept));
  }
};

struct Object {
  QString bus;
  QString path;
};

class Reader {
 public:
  Reader() : session_(QDBusConnection::sessionBus()), bus_(QString()) {
    const auto answer = call(session_, {QStringLiteral("org.a11y.Bus"), QStringLiteral("/org/a11y/bus")},
                             QStringLiteral("org.a11y.Bus"), QStringLiteral("GetAddress"), {});
    address_ = answer.value(0).toString();
    bus_ = QDBusConnection::connectToBus(address_, QStringLiteral("reader"));
  }

  std::string run(const QString& line) {
    const QString command = line.section(QLatin1Char(' '), 0, 0);
    const QString rest = line.section(QLatin1Char(' '), 1);
    if (command == QLatin1String("on")) return listen() == "done" ? announce(true) : "refused";
    if (command == QLatin1String("off")) return announce(false);
    if (command == QLatin1String("announce")) return announce(true);
    if (command == QLatin1String("listen")) return listen();
    if (command == QLatin1String("invites")) return invites();
    if (command == QLatin1String("address")) return address_.toStdString();
    if (command == QLatin1String("pid")) return processOf(rest);
    if (command == QLatin1String("name")) return nameOf(rest.toUInt());
    if (command == QLatin1String("keys")) return listenToKeys();
    if (command == QLatin1String("keep")) return keep(rest);
    if (command == QLatin1String("heard")) return keys_.heard.join(QLatin1Char(' ')).toStdString();
    if (command == QLatin1String("programs")) return programs();
    if (command == QLatin1String("read")) return read();
    if (command == QLatin1String("press")) return perform(rest, QStringLiteral("Press"));
    if (command == QLatin1String("menu")) return perform(rest, QStringLiteral("ShowMenu"));
    if (command == QLatin1String("abuse")) return abuse();
    return "unknown";
  }

 private:
  static QVariantList call(const QDBusConnection& bus, const Object& object, const QString& interface,
                           const QString& method, const QVariantList& arguments) {
    auto message = QDBusMessage::createMethodCall(object.bus, object.path, interface, method);
    message.setArguments(arguments);
    const auto answer = bus.call(message, QDBus::Block, answerMilliseconds);
    return answer.type() == QDBusMessage::ReplyMessage ? answer.arguments() : QVariantList();
  }
  [[nodiscard]] QVariantList ask(const Object& object, const QString& interface, const QString& method,
                                 const QVariantList& arguments = {}) const {
    return call(bus_, object, interface, method, arguments);
  }
  [[nodiscard]] QString property(const Object& object, const QString& name) const {
    const auto answer = ask(object, propertiesInterface, QStringLiteral("Get"), {accessibleInterface, name});
    return answer.value(0).value<QDBusVariant>().variant().toString();
  }

  [[nodiscard]] std::string listen() {
    if (std::exchange(listens_, true)) return "done";
    auto call = QDBusMessage::createMethodCall(registryName, QStringLiteral("/org/a11y/atspi/registry"),
                                               registryName, QStringLiteral("RegisterEvent"));
    call << QStringLiteral("object:");
    const auto answer = bus_.call(call, QDBus::Block, answerMilliseconds);
    return answer.type() == QDBusMessage::ReplyMessage ? "done" : "refused";
  }
  [[nodiscard]] std::string announce(bool listening) const {
    for (const char* const property : {"ScreenReaderEnabled", "IsEnabled"})
      call(session_, {QStringLiteral("org.a11y.Bus"), QStringLiteral("/org/a11y/bus")}, propertiesInterface,
           QStringLiteral("Set"),
           {QStringLiteral("org.a11y.Status"), QString::fromLatin1(property),
            QVariant::fromValue(QDBusVariant(listening))});
    return "done";
  }

  static uint processOf(const QDBusConnection& bus, const QString& name) {
    const auto answer = call(bus, {driverName, QStringLiteral("/")}, driverName,
                             QStringLiteral("GetConnectionUnixProcessID"), {name});
    return answer.value(0).toUInt();
  }
  [[nodiscard]] std::string processOf(const QString& part) const {
    if (part == QLatin1String("launcher"))
      return std::to_string(processOf(session_, QStringLiteral("org.a11y.Bus")));
    return std::to_string(processOf(bus_, part == QLatin1String("registry") ? registryName : driverName));
  }
  [[nodiscard]] std::string nameOf(uint process) const {
    const auto names =
        call(bus_, {driverName, QStringLiteral("/")}, driverName, QStringLiteral("ListNames"), {});
    for (const QString& name : names.value(0).toStringList())
      if (processOf(bus_, name) == process) return name.toStdString();
    return "-";
  }

  std::string listenToKeys() {
    bus_.registerVirtualObject(keysPath, &keys_);
    constexpr uint pressesAndReleases = 3;
    QDBusArgument synchronous;
    synchronous.beginStructure();
    synchronous << true << true << false;  // it may keep keys, and grabs none of the server
    synchronous.endStructure();
    const auto answer =
        call(bus_, {registryName, QStringLiteral("/org/a11y/atspi/registry/deviceeventcontroller")},
             controllerInterface, QStringLiteral("RegisterKeystrokeListener"),
             {QVariant::fromValue(QDBusObjectPath(keysPath)), QVariant::fromValue(QList<KeyDefinition>()), 0U,
              pressesAndReleases, QVariant::fromValue(synchronous)});
    return answer.isEmpty() ? "refused" : "done";
  }
  std::string keep(const QString& name) {
    keys_.kept = name;
    return "done";
  }

  [[nodiscard]] std::string invites() const {
    const auto answer =
        call(session_, {QStringLiteral("org.a11y.Bus"), QStringLiteral("/org/a11y/bus")}, propertiesInterface,
             QStringLiteral("Get"), {QStringLiteral("org.a11y.Status"), QStringLiteral("IsEnabled")});
    return answer.value(0).value<QDBusVariant>().variant().toBool() ? "yes" : "no";
  }

  [[nodiscard]] QList<Object> children(const Object& parent) const {
    QList<Object> found;
    const auto answer = ask(parent, accessibleInterface, QStringLiteral("GetChildren"));
    if (answer.isEmpty()) return found;
    const auto list = answer.first().value<QDBusArgument>();
    list.beginArray();
    while (!list.atEnd()) {
      Object child;
      QDBusObjectPath path;
      list.beginStructure();
      list >> child.bus >> path;
      list.endStructure();
      child.path = path.path();
      found << child;
    }
    list.endArray();
    return found;
  }

  [[nodiscard]] std::string programs() const {
    QStringList names;
    for (const Object& program : children({registryName, rootPath}))
      names << property(program, QStringLiteral("Name"));
    return names.join(QLatin1Char('|')).toStdString();
  }
  [[nodiscard]] std::optional<Object> pellar() const {
    for (const Object& program : children({registryName, rootPath}))
      if (property(program, QStringLiteral("Name")) == QLatin1String("Pellar")) return program;
    return std::nullopt;
  }

  // Until `visit` says that it has seen enough.
  bool walk(const Object& object, const QString& above,
            const std::function<bool(const Object&, const QString& path)>& visit) const {
    for (const Object& child : children(object)) {
      const QString path = above + QStringLiteral(" > ") + property(child, QStringLiteral("Name"));
      if (visit(child, path) || walk(child, path, visit)) return true;
    }
    return false;
  }

  [[nodiscard]] QString states(const Object& object) const {
    // Their numbers in the protocol.
    constexpr quint64 checked = 4;
    constexpr quint64 selected = 23;
    const auto answer = ask(object, accessibleInterface, QStringLiteral("GetState"));
    if (answer.isEmpty()) return {};
    QList<uint> words;
    answer.first().value<QDBusArgument>() >> words;
    const auto has = [&](quint64 number) {
      return ((words.value(static_cast<qsizetype>(number / 32)) >> (number % 32)) & 1U) != 0;
    };
    QStringList names;
    if (has(checked)) names << QStringLiteral("checked");
    if (has(selected)) names << QStringLiteral("selected");
    return names.join(QLatin1Char(','));
  }
  [[nodiscard]] QString extents(const Object& object) const {
    const auto answer = ask(object, componentInterface, QStringLiteral("GetExtents"), {0U});
    if (answer.isEmpty()) return {};
    int x = 0;
    int y = 0;
    int width = 0;
    int height = 0;
    const auto rect = answer.first().value<QDBusArgument>();
    rect.beginStructure();
    rect >> x >> y >> width >> height;
    rect.endStructure();
    return QStringLiteral("%1,%2,%3,%4").arg(x).arg(y).arg(width).arg(height);
  }

  [[nodiscard]] std::string read() const {
    QStringList lines;
    const auto program = pellar();
    // Readers ask each program for what they may keep in mind of it; an error is no answer.
    if (program && !ask({program->bus, QStringLiteral("/org/a11y/atspi/cache")},
                        QStringLiteral("org.a11y.atspi.Cache"), QStringLiteral("GetItems"))
                        .isEmpty()) {
      walk(*program, {}, [&](const Object& object, const QString& /*path*/) {
        const QString role =
            ask(object, accessibleInterface, QStringLiteral("GetRoleName")).value(0).toString();
        lines << QStringList{role, property(object, QStringLiteral("Name")),
                             property(object, QStringLiteral("Description")), states(object), extents(object)}
                     .join(QLatin1Char(';'));
        return false;
      });
    }
    return lines.isEmpty() ? "-" : lines.join(QLatin1Char('|')).toStdString();
  }

  [[nodiscard]] std::string perform(const QString& name, const QString& action) const {
    std::optional<Object> target;
    if (const auto program = pellar()) {
      walk(*program, {}, [&](const Object& object, const QString& path) {
        if (!path.endsWith(QStringLiteral(" > ") + name)) return false;
        target = object;
        return true;
      });
    }
    if (!target) return "no such element";
    for (int index = 0; index < 4; ++index) {
      if (ask(*target, actionInterface, QStringLiteral("GetName"), {index}).value(0).toString() != action)
        continue;
      const auto answer = ask(*target, actionInterface, QStringLiteral("DoAction"), {index});
      return answer.value(0).toBool() ? "done" : "refused";
    }
    return "no such action";
  }

  [[nodiscard]] std::string abuse() const {
    const auto program = pellar();
    if (!program) return "no Pellar";
    QList<Object> objects{*program,
                          {program->bus, rootPath + QStringLiteral("/nothing")},
                          {program->bus, QStringLiteral("/org/a11y/atspi/accessible/1")},
                          {program->bus, QStringLiteral("/org/a11y/atspi/accessible/99999999999999999999")}};
    walk(*program, {}, [&](const Object& object, const QString& /*path*/) {
      objects << object;
      return objects.size() > 9;
    });
    const QList<QVariantList> nonsense{{}, {-1}, {2'000'000'000}, {QStringLiteral("text")}, {-5, -5, 7U}};
    const QStringList methods{
        QStringLiteral("org.a11y.atspi.Accessible GetChildAtIndex GetChildren GetState GetRelationSet"),
        QStringLiteral("org.a11y.atspi.Action GetName GetDescription GetKeyBinding DoAction GetActions"),
        QStringLiteral(
            "org.a11y.atspi.Component GetExtents GetPosition Contains GetAccessibleAtPoint GrabFocus"),
        QStringLiteral("org.a11y.atspi.Application GetLocale"),
        QStringLiteral("org.a11y.atspi.Text GetText GetCharacterExtents SetCaretOffset"),
        QStringLiteral("org.a11y.atspi.EditableText SetTextContents InsertText"),
        QStringLiteral("org.freedesktop.DBus.Properties Get Set GetAll")};
    for (const Object& object : objects) {
      for (const QString& line : methods) {
        const QStringList words = line.split(QLatin1Char(' '));
        for (const QString& method : words.mid(1))
          for (const QVariantList& arguments : nonsense)
            static_cast<void>(ask(object, words.first(), method, arguments));
      }
    }
    return "done";
  }

  QDBusConnection session_;
  QDBusConnection bus_;
  QString address_;
  const QString keysPath = QStringLiteral("/keys");
  KeyListener keys_;
  bool listens_ = false;
};

}  // namespace

int main(int argc, char** argv) {
  const QCoreApplication application(argc, argv);
  qDBusRegisterMetaType<KeyDefinition>();
  qDBusRegisterMetaType<QList<KeyDefinition>>();
  Reader reader;
  QObject here;
  // The bus is listened to between commands, too.
  std::thread input([&] {
    for (std::string line; std::getline(std::cin, line);) {
      QMetaObject::invokeMethod(
          &here, [&reader, line] { std::cout << reader.run(QString::fromStdString(line)) << std::endl; });
    }
    QMetaObject::invokeMethod(&here, [] { QCoreApplication::quit(); });
  });
  const int code = QCoreApplication::exec();
  input.join();
  return code;
}
