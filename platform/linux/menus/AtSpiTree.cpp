#include "platform/linux/menus/AtSpiTree.h"

#include <QDBusArgument>
#include <QDBusObjectPath>
#include <QDBusVariant>
#include <algorithm>
#include <array>
#include <cmath>
#include <fstream>
#include <string_view>
#include <thread>
#include <utility>

namespace pellar {
namespace {

using namespace std::chrono_literals;
using namespace std::string_view_literals;

const QString accessibleInterface = QStringLiteral("org.a11y.atspi.Accessible");
const QString actionInterface = QStringLiteral("org.a11y.atspi.Action");
const AtSpiReference registryRoot{AtSpiBus::registry, QStringLiteral("/org/a11y/atspi/accessible/root")};
const AtSpiReference busItself{QStringLiteral("org.freedesktop.DBus"),
                               QStringLiteral("/org/freedesktop/DBus")};

// The roles and states of AT-SPI 2 that matter here.
constexpr std::uint32_t checkMenuItemRole = 8;
constexpr std::uint32_t fillerRole = 20;
constexpr std::uint32_t frameRole = 23;
constexpr std::uint32_t menuBarRole = 34;
constexpr std::uint32_t menuItemRole = 35;
constexpr std::uint32_t panelRole = 39;
constexpr std::uint32_t popupMenuRole = 41;
constexpr std::uint32_t radioMenuItemRole = 45;
constexpr std::uint32_t rootPaneRole = 46;
constexpr std::uint32_t windowRole = 69;
constexpr std::uint32_t enabledState = 1U << 8U;
constexpr std::uint32_t sensitiveState = 1U << 24U;

// How deep below its window a menu bar may lie, and among how many others.
constexpr int deepestMenuBar = 6;
constexpr std::size_t mostObjects = 256;

constexpr std::uint32_t screenCoordinates = 0;

// How far apart the two reports of one window's corner may be: with its decorations or without.
constexpr double farthest = 80;

constexpr auto invitationPause = 20ms;

std::string trimmed(const QString& name) {
  // Behind a tab stands the key.
  return name.section(QLatin1Char('\t'), 0, 0).trimmed().toStdString();
}

std::optional<std::string> nameIn(const std::optional<QVariantList>& answer) {
  if (!answer || answer->isEmpty()) return std::nullopt;
  return trimmed(answer->first().value<QDBusVariant>().variant().toString());
}

// Whether a window's title is this name with what the toolkit appends.
bool extends(std::string_view title, std::string_view name) {
  if (name.empty() || !title.starts_with(name)) return false;
  const auto rest = title.substr(name.size());
  constexpr std::array separators{" - "sv, " – "sv, " — "sv};
  return std::ranges::any_of(separators, [&](std::string_view each) { return rest.starts_with(each); });
}

// Programs of this toolkit come to the bus only when somebody asks for them.
bool waitsForInvitation(ProcessId process) {
  std::ifstream maps("/proc/" + std::to_string(process) + "/maps");
  constexpr int mostLines = 20000;
  std::string line;
  for (int count = 0; count < mostLines && std::getline(maps, line); ++count) {
    if (line.find("/libQt5Gui.so") != std::string::npos || line.find("/libQt6Gui.so") != std::string::npos)
      return true;
  }
  return false;
}

bool canBeChosen(std::optional<std::uint32_t> role) {
  return role == menuItemRole || role == checkMenuItemRole || role == radioMenuItemRole;
}

// Whether an item can be chosen by a key alone. One toolkit tells just that key, the other tells it behind
// the keys that lead through the menus.
bool hasOwnKey(const std::optional<QVariantList>& keyBinding) {
  if (!keyBinding || keyBinding->isEmpty()) return false;
  const QString keys = keyBinding->first().toString();
  return keys.contains(QLatin1Char(';')) ? !keys.section(QLatin1Char(';'), 2).isEmpty() : !keys.isEmpty();
}

}  // namespace

QDBusPendingCall AtSpiTree::askForReferences(const AtSpiReference& parent, Deadline deadline) const {
  return bus_.send(parent, accessibleInterface, QStringLiteral("GetChildren"), {}, deadline);
}

std::optional<AtSpiTree::References> AtSpiTree::referencesIn(const std::optional<QVariantList>& answer) {
  if (!answer || answer->isEmpty()) return std::nullopt;
  const auto list = answer->first().value<QDBusArgument>();
  if (list.currentSignature() != QLatin1String("a(so)")) return std::nullopt;
  References result;
  list.beginArray();
  while (!list.atEnd() && result.size() < mostObjects) {
    AtSpiReference object;
    QDBusObjectPath path;
    list.beginStructure();
    list >> object.bus >> path;
    list.endStructure();
    object.path = path.path();
    result.push_back(std::move(object));
  }
  list.endArray();
  return result;
}

std::optional<AtSpiTree::References> AtSpiTree::references(const AtSpiReference& parent, Deadline deadline) {
  return referencesIn(AtSpiBus::receive(askForReferences(parent, deadline)));
}

std::vector<std::optional<std::uint32_t>> AtSpiTree::roles(const References& objects, Deadline deadline) {
  std::vector<QDBusPendingCall> calls;
  for (const auto& each : objects)
    calls.push_back(bus_.send(each, accessibleInterface, QStringLiteral("GetRole"), {}, deadline));
  std::vector<std::optional<std::uint32_t>> result;
  for (const auto& each : calls) {
    const auto answer = AtSpiBus::receive(each);
    result.push_back(answer && !answer->isEmpty() ? std::optional(answer->first().toUInt()) : std::nullopt);
  }
  return result;
}

std::optional<std::vector<AtSpiTree::Found>> AtSpiTree::named(const AtSpiReference& parent,
                                                              Deadline deadline) {
  const auto objects = references(parent, deadline);
  if (!objects) return std::nullopt;
  std::vector<QDBusPendingCall> calls;
  for (const auto& each : *objects)
    calls.push_back(bus_.send(each, AtSpiBus::propertiesInterface, QStringLiteral("Get"),
                              {accessibleInterface, QStringLiteral("Name")}, deadline));
  std::vector<Found> result;
  for (std::size_t index = 0; index < calls.size(); ++index)
    result.push_back({(*objects)[index], nameIn(AtSpiBus::receive(calls[index]))});
  return result;
}

// --- from a process to its menu bar ---

std::optional<AtSpiReference> AtSpiTree::program(ProcessId process, Deadline deadline) {
  const auto programs = references(registryRoot, deadline);
  if (!programs) return std::nullopt;
  std::vector<std::pair<QString, QDBusPendingCall>> calls;
  QHash<QString, ProcessId> present;
  for (const auto& each : *programs) {
    // A unique name is never given to another program.
    if (const auto known = processes_.constFind(each.bus); known != processes_.constEnd()) {
      present.insert(each.bus, *known);
    } else {
      calls.emplace_back(each.bus,
                         bus_.send(busItself, busItself.bus, QStringLiteral("GetConnectionUnixProcessID"),
                                   {each.bus}, deadline));
    }
  }
  for (const auto& [bus, call] : calls) {
    const auto answer = AtSpiBus::receive(call);
    if (answer && !answer->isEmpty()) present.insert(bus, static_cast<ProcessId>(answer->first().toUInt()));
  }
  processes_ = std::move(present);
  const auto found = std::ranges::find_if(
      *programs, [&](const auto& each) { return processes_.value(each.bus, 0) == process; });
  return found == programs->end() ? std::nullopt : std::optional(*found);
}

std::optional<AtSpiReference> AtSpiTree::programOrInvited(ProcessId process, Deadline deadline) {
  auto found = program(process, deadline);
  if (found || AtSpiBus::isOver(deadline) || !waitsForInvitation(process)) return found;
  if (!bus_.enable(deadline)) return found;
  while (!found && !AtSpiBus::isOver(deadline)) {
    std::this_thread::sleep_for(invitationPause);
    found = program(process, deadline);
  }
  return found;
}

std::optional<AtSpiReference> AtSpiTree::frame(const AtSpiWindow& window, Deadline deadline) {
  const auto program = programOrInvited(window.process, deadline);
  if (!program) return std::nullopt;
  const auto all = named(*program, deadline);
  if (!all) return std::nullopt;
  References objects;
  for (const auto& each : *all) objects.push_back(each.object);
  const auto kinds = roles(objects, deadline);
  const std::string title = trimmed(QString::fromStdString(window.title));
  std::vector<Found> frames;
  std::vector<Found> equal;
  std::vector<Found> similar;
  for (std::size_t index = 0; index < all->size(); ++index) {
    if (kinds[index] != frameRole && kinds[index] != windowRole) continue;
    const auto& each = (*all)[index];
    frames.push_back(each);
    if (each.name == title) equal.push_back(each);
    if (each.name && extends(title, *each.name)) similar.push_back(each);
  }
  if (window.isOnly && frames.size() == 1) return frames.front().object;
  if (equal.size() == 1) return equal.front().object;
  if (equal.empty() && similar.size() == 1) return similar.front().object;
  // Several of that title, or none: a title that just changed is told here and there at different times.
  if (!equal.empty()) return nearest(equal, window.frame, deadline);
  return nearest(similar.empty() ? frames : similar, window.frame, deadline);
}

std::optional<AtSpiReference> AtSpiTree::nearest(const std::vector<Found>& frames, const RootRect& frame,
                                                 Deadline deadline) {
  std::vector<QDBusPendingCall> calls;
  for (const auto& each : frames) {
    calls.push_back(bus_.send(each.object, QStringLiteral("org.a11y.atspi.Component"),
                              QStringLiteral("GetExtents"), {screenCoordinates}, deadline));
  }
  std::optional<std::size_t> best;
  double least = farthest;
  bool tie = false;
  for (std::size_t index = 0; index < frames.size(); ++index) {
    const auto answer = AtSpiBus::receive(calls[index]);
    if (!answer || answer->isEmpty()) continue;
    const auto extents = answer->first().value<QDBusArgument>();
    if (extents.currentSignature() != QLatin1String("(iiii)")) continue;
    int x = 0;
    int y = 0;
    int width = 0;
    int height = 0;
    extents.beginStructure();
    extents >> x >> y >> width >> height;
    extents.endStructure();
    const double distance = std::abs(x - frame.x) + std::abs(y - frame.y);
    if (distance > least) continue;
    tie = best && distance == least;
    if (tie) continue;
    best = index;
    least = distance;
  }
  if (!best || tie) return std::nullopt;
  return frames[*best].object;
}

std::optional<AtSpiReference> AtSpiTree::menuBarIn(const AtSpiReference& frame, Deadline deadline) {
  References level{frame};
  std::size_t seen = 0;
  for (int depth = 0; depth < deepestMenuBar && !level.empty(); ++depth) {
    References inside;
    std::vector<QDBusPendingCall> calls;
    for (const auto& each : level) calls.push_back(askForReferences(each, deadline));
    for (const auto& each : calls) {
      const auto objects = referencesIn(AtSpiBus::receive(each));
      if (!objects) return std::nullopt;
      inside.insert(inside.end(), objects->begin(), objects->end());
    }
    seen += inside.size();
    if (seen > mostObjects) return std::nullopt;
    const auto kinds = roles(inside, deadline);
    level.clear();
    for (std::size_t index = 0; index < inside.size(); ++index) {
      if (kinds[index] == menuBarRole) return inside[index];
      if (kinds[index] == fillerRole || kinds[index] == panelRole || kinds[index] == rootPaneRole)
        level.push_back(inside[index]);
    }
  }
  return std::nullopt;
}

std::optional<AtSpiObject> AtSpiTree::exportedBar(const ExportedMenuBar& bar, Deadline deadline) {
  const auto items = ExportedMenus(bus_, bar).items(ExportedMenus::barId, deadline);
  if (!items || items->empty()) return std::nullopt;
  ExportedItem whole;
  whole.submenu = ExportedMenus::barId;
  return AtSpiObject{{bar.bus, bar.menuBarPath},
                     std::make_shared<AtSpiObject::Exported>(AtSpiObject::Exported{bar, whole})};
}

std::optional<AtSpiObject> AtSpiTree::menuBar(const AtSpiWindow& window, Deadline deadline) {
  if (!bus_.connect(deadline)) return std::nullopt;
  // Where there is a choice: a click in a closed menu leaves some programs with the mouse and the keyboard
  // held, as if the menu were open.
  if (window.exported) {
    if (auto bar = exportedBar(*window.exported, deadline)) return bar;
  }
  const auto found = frame(window, deadline);
  if (!found) return std::nullopt;
  const auto bar = menuBarIn(*found, deadline);
  return bar ? std::optional(AtSpiObject{*bar, nullptr}) : std::nullopt;
}

// --- menus and their items ---

std::optional<std::vector<AtSpiNamed>> AtSpiTree::children(const AtSpiObject& parent, Deadline deadline) {
  std::vector<AtSpiNamed> result;
  if (const auto& place = parent.exported) {
    if (!place->item.submenu) return std::nullopt;
    const auto items = ExportedMenus(bus_, place->bar).items(*place->item.submenu, deadline);
    if (!items) return std::nullopt;
    for (const auto& item : *items) {
      const AtSpiReference reference{parent.reference.bus,
                                     parent.reference.path + QStringLiteral("/%1").arg(result.size())};
      result.push_back(
          {{reference, std::make_shared<AtSpiObject::Exported>(AtSpiObject::Exported{place->bar, item})},
           item.title});
    }
    return result;
  }
  const auto found = named(parent.reference, deadline);
  if (!found) return std::nullopt;
  for (const auto& each : *found) result.push_back({{each.object, nullptr}, each.name});
  return result;
}

std::optional<AtSpiObject> AtSpiTree::menuOf(const AtSpiObject& barItem, Deadline deadline) {
  if (barItem.exported) return barItem.exported->item.submenu ? std::optional(barItem) : std::nullopt;
  const auto objects = references(barItem.reference, deadline);
  if (!objects || objects->empty()) return std::nullopt;
  const auto kind = roles({objects->front()}, deadline).front();
  if (!kind) return std::nullopt;
  return *kind == popupMenuRole ? AtSpiObject{objects->front(), nullptr} : barItem;
}

std::optional<bool> AtSpiTree::isEnabled(const AtSpiObject& object, Deadline deadline) {
  if (const auto& place = object.exported)
    return ExportedMenus(bus_, place->bar).isEnabled(place->item, deadline);
  return isSensitive(object.reference, deadline);
}

std::optional<bool> AtSpiTree::isSensitive(const AtSpiReference& object, Deadline deadline) {
  const auto answer = bus_.call(object, accessibleInterface, QStringLiteral("GetState"), {}, deadline);
  if (!answer || answer->isEmpty()) return std::nullopt;
  const auto list = answer->first().value<QDBusArgument>();
  if (list.currentSignature() != QLatin1String("au")) return std::nullopt;
  const auto states = qdbus_cast<QList<uint>>(list);
  if (states.isEmpty()) return std::nullopt;
  return (states.first() & enabledState) != 0 && (states.first() & sensitiveState) != 0;
}

// A submenu would open by itself, take keyboard and pointer, and leave the choice to the user. Where it holds
// several kinds of one thing, the usual kind is the one with a key.
std::optional<AtSpiReference> AtSpiTree::itemMeantBy(const AtSpiReference& object, Deadline deadline) {
  auto inside = references(object, deadline);
  if (!inside || inside->empty()) return object;
  auto kinds = roles(*inside, deadline);
  if (kinds.front() == popupMenuRole) {
    inside = references(inside->front(), deadline);
    if (!inside) return std::nullopt;
    kinds = roles(*inside, deadline);
  }
  std::optional<AtSpiReference> first;
  for (std::size_t index = 0; index < inside->size() && !AtSpiBus::isOver(deadline); ++index) {
    const auto& each = (*inside)[index];
    if (!canBeChosen(kinds[index]) || !isSensitive(each, deadline).value_or(false)) continue;
    if (hasOwnKey(bus_.call(each, actionInterface, QStringLiteral("GetKeyBinding"), {0}, deadline)))
      return each;
    if (!first) first = each;
  }
  return first;
}

Performed AtSpiTree::press(const AtSpiObject& object, Deadline deadline, std::atomic<bool>& sent) {
  if (const auto& place = object.exported)
    return ExportedMenus(bus_, place->bar).activate(place->item, deadline, sent);
  const auto item = itemMeantBy(object.reference, deadline);
  if (!item || AtSpiBus::isOver(deadline)) return Performed::refused;
  sent = true;
  const auto call = bus_.send(*item, actionInterface, QStringLiteral("DoAction"), {0}, deadline);
  const auto answer = AtSpiBus::receive(call);
  if (!answer) return AtSpiBus::performed(call);
  return !answer->isEmpty() && answer->first().toBool() ? Performed::done : Performed::refused;
}

}  // namespace pellar
