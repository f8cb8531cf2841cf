#include "platform/linux/menus/ExportedMenus.h"

#include <QDBusArgument>
#include <QList>
#include <QVariantMap>
#include <algorithm>
#include <array>
#include <map>
#include <utility>

#include "platform/linux/x11/X11Connection.h"
#include "platform/linux/x11/X11Property.h"
#include "platform/linux/x11/XcbReply.h"

namespace pellar {
namespace {

const QString menusInterface = QStringLiteral("org.gtk.Menus");
const QString actionsInterface = QStringLiteral("org.gtk.Actions");
const QString labelKey = QStringLiteral("label");
const QString actionKey = QStringLiteral("action");
const QString keyKey = QStringLiteral("accel");
const QString targetKey = QStringLiteral("target");
const QString sectionKey = QStringLiteral(":section");
const QString submenuKey = QStringLiteral(":submenu");

// A menu made of sections of sections ends here.
constexpr int deepestSection = 4;
// Of a menu: one whose sections contain one another would never be read to its end.
constexpr std::size_t mostRows = 4096;
constexpr std::uint32_t longestPath = 1024;

using MenuId = ExportedItem::MenuId;
using Row = QVariantMap;

std::optional<MenuId> menuBehind(const Row& row, const QString& key) {
  const auto found = row.constFind(key);
  if (found == row.constEnd() || !found->canConvert<QDBusArgument>()) return std::nullopt;
  const auto argument = found->value<QDBusArgument>();
  if (argument.currentSignature() != QLatin1String("(uu)")) return std::nullopt;
  MenuId id;
  argument.beginStructure();
  argument >> id.first >> id.second;
  argument.endStructure();
  return id;
}

// Without the marks of keys, which are underscores, and the blanks that align.
std::string titleOf(const Row& row) {
  QString title;
  const QString label = row.value(labelKey).toString();
  for (qsizetype index = 0; index < label.size(); ++index) {
    if (label[index] == QLatin1Char('_') && ++index == label.size()) break;
    title += label[index];
  }
  return title.trimmed().toStdString();
}

ExportedItem itemOf(const Row& row) {
  ExportedItem item{titleOf(row), row.value(actionKey).toString(), {}, row.contains(keyKey), std::nullopt};
  if (row.contains(targetKey)) item.target.append(row.value(targetKey));
  item.submenu = menuBehind(row, submenuKey);
  return item;
}

std::map<MenuId, QList<Row>> menusIn(const QVariant& answer) {
  std::map<MenuId, QList<Row>> menus;
  const auto list = answer.value<QDBusArgument>();
  if (list.currentSignature() != QLatin1String("a(uuaa{sv})")) return menus;
  list.beginArray();
  while (!list.atEnd()) {
    MenuId id;
    QList<Row> rows;
    list.beginStructure();
    list >> id.first >> id.second;
    list.beginArray();
    while (!list.atEnd()) {
      Row row;
      list >> row;
      rows.append(row);
    }
    list.endArray();
    list.endStructure();
    menus.insert_or_assign(id, std::move(rows));
  }
  list.endArray();
  return menus;
}

// Fetches menus group by group. A program tells of a group's changes for as long as somebody holds it.
class MenuReader {
 public:
  MenuReader(const AtSpiBus& bus, AtSpiReference object, AtSpiBus::Deadline deadline)
      : bus_(bus), object_(std::move(object)), deadline_(deadline) {}
  ~MenuReader() {
    if (!held_.isEmpty()) static_cast<void>(call(QStringLiteral("End"), held_));
  }
  MenuReader(const MenuReader&) = delete;
  MenuReader& operator=(const MenuReader&) = delete;

  // False when the program does not tell.
  bool read(MenuId id, std::vector<ExportedItem>& items, int depth = 0) {
    if (depth > deepestSection || !fetch(id.first)) return false;
    const QList<Row> rows = menus_[id];
    for (const Row& row : rows) {
      if (++seen_ > mostRows) break;
      if (const auto section = menuBehind(row, sectionKey)) {
        read(*section, items, depth + 1);
      } else {
        items.push_back(itemOf(row));
      }
    }
    return true;
  }

 private:
  [[nodiscard]] QDBusPendingCall call(const QString& method, const QList<uint>& groups) const {
    return bus_.sendOnSession(object_, menusInterface, method, {QVariant::fromValue(groups)}, deadline_);
  }
  bool fetch(uint group) {
    if (held_.contains(group)) return true;
    const auto answer = AtSpiBus::receive(call(QStringLiteral("Start"), {group}));
    if (!answer || answer->isEmpty()) return false;
    held_.append(group);
    menus_.merge(menusIn(answer->first()));
    return true;
  }

  const AtSpiBus& bus_;
  AtSpiReference object_;
  AtSpiBus::Deadline deadline_;
  QList<uint> held_;
  std::size_t seen_ = 0;
  std::map<MenuId, QList<Row>> menus_;
};

// Of several kinds of one thing, the usual kind is the one with a key.
std::optional<ExportedItem> usual(const std::vector<ExportedItem>& items) {
  const auto acts = [](const ExportedItem& item) { return !item.action.isEmpty(); };
  auto found =
      std::ranges::find_if(items, [&](const ExportedItem& item) { return acts(item) && item.hasKey; });
  if (found == items.end()) found = std::ranges::find_if(items, acts);
  return found == items.end() ? std::nullopt : std::optional(*found);
}

}  // namespace

std::optional<ExportedMenuBar> exportedMenuBarOf(const X11Connection& connection, xcb_window_t window) {
  const X11Atoms& atoms = connection.atoms();
  std::array<xcb_get_property_cookie_t, 5> cookies{};
  const std::array names{atoms.gtkUniqueBusName, atoms.gtkMenuBarPath, atoms.gtkWindowPath,
                         atoms.gtkApplicationPath, atoms.unityObjectPath};
  std::ranges::transform(names, cookies.begin(), [&](xcb_atom_t name) {
    return xcb_get_property(connection.xcb(), 0, window, name, atoms.utf8String, 0, longestPath / 4);
  });
  std::array<QString, 5> texts;
  std::ranges::transform(cookies, texts.begin(), [&](xcb_get_property_cookie_t cookie) {
    const auto reply = owned(xcb_get_property_reply(connection.xcb(), cookie, nullptr));
    return QString::fromStdString(bytes(reply.get()).value_or(std::string()));
  });
  ExportedMenuBar bar{texts[0], texts[1], texts[2], texts[3], texts[4]};
  if (bar.bus.isEmpty() || bar.menuBarPath.isEmpty()) return std::nullopt;
  return bar;
}

std::optional<std::vector<ExportedItem>> ExportedMenus::items(MenuId menu, Deadline deadline) const {
  std::vector<ExportedItem> result;
  if (!MenuReader(bus_, {bar_.bus, bar_.menuBarPath}, deadline).read(menu, result)) return std::nullopt;
  return result;
}

// "win.save" is the window's action "save", "app.save" the application's, "unity.save" a module's.
std::optional<QDBusPendingCall> ExportedMenus::callAction(const QString& method, const ExportedItem& item,
                                                          const QVariantList& more, Deadline deadline) const {
  const QString name = item.action.section(QLatin1Char('.'), 1);
  const QString scope = item.action.section(QLatin1Char('.'), 0, 0);
  const QString& path = scope == QLatin1String("app")     ? bar_.applicationPath
                        : scope == QLatin1String("unity") ? bar_.modulePath
                                                          : bar_.windowPath;
  if (name.isEmpty() || path.isEmpty()) return std::nullopt;
  return bus_.sendOnSession({bar_.bus, path}, actionsInterface, method, QVariantList{name} + more, deadline);
}

std::optional<bool> ExportedMenus::isEnabled(const ExportedItem& item, Deadline deadline) const {
  if (item.submenu) return true;
  const auto call = callAction(QStringLiteral("Describe"), item, {}, deadline);
  const auto answer = call ? AtSpiBus::receive(*call) : std::nullopt;
  if (!answer || answer->isEmpty()) return std::nullopt;
  const auto description = answer->first().value<QDBusArgument>();
  if (description.currentSignature() != QLatin1String("(bgav)")) return std::nullopt;
  bool enabled = false;
  description.beginStructure();
  description >> enabled;
  return enabled;
}

Performed ExportedMenus::activate(const ExportedItem& item, Deadline deadline,
                                  std::atomic<bool>& sent) const {
  const auto meant = item.submenu
                         ? usual(items(*item.submenu, deadline).value_or(std::vector<ExportedItem>()))
                         : std::optional(item);
  if (!meant || AtSpiBus::isOver(deadline)) return Performed::refused;
  sent = true;
  auto call =
      callAction(QStringLiteral("Activate"), *meant, {QVariant(meant->target), QVariantMap()}, deadline);
  if (!call) return Performed::refused;
  call->waitForFinished();
  return AtSpiBus::performed(*call);
}

}  // namespace pellar
