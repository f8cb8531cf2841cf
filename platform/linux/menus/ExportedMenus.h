#pragma once

#include <xcb/xcb.h>

#include <QString>
#include <QVariantList>
#include <atomic>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "platform/linux/menus/AtSpiBus.h"

namespace pellar {

class X11Connection;

// Where on the session bus a window's program describes its menu bar and takes orders for it.
struct ExportedMenuBar {
  QString bus;
  QString menuBarPath;
  QString windowPath;
  QString applicationPath;  // empty where there is none, like the next
  QString modulePath;       // of a toolkit's module that exports what the program itself does not
};

// A row of such a menu, or a menu of the bar.
struct ExportedItem {
  // A menu's number: its group, and its place there.
  using MenuId = std::pair<unsigned, unsigned>;

  std::string title;
  QString action;  // with its scope, "win.save"; empty for one that only opens a menu
  QVariantList target;
  bool hasKey = false;
  std::optional<MenuId> submenu;
};

// What a window says about its menu bar; absent when its program exports none. Asks the X server. Main thread
// only.
[[nodiscard]] std::optional<ExportedMenuBar> exportedMenuBarOf(const X11Connection& connection,
                                                               xcb_window_t window);

// Menu bars as some programs export them for desktops that show one for all windows. Asking them is a matter
// of a few calls, and what they are told to do opens no menu. For a side thread.
class ExportedMenus {
 public:
  using Deadline = AtSpiBus::Deadline;
  using MenuId = ExportedItem::MenuId;
  static constexpr MenuId barId{0, 0};

  ExportedMenus(const AtSpiBus& bus, ExportedMenuBar bar) : bus_(bus), bar_(std::move(bar)) {}

  // The items of a menu with those of its sections; absent when the program does not tell.
  [[nodiscard]] std::optional<std::vector<ExportedItem>> items(MenuId menu, Deadline deadline) const;
  // Absent when the program does not tell.
  [[nodiscard]] std::optional<bool> isEnabled(const ExportedItem& item, Deadline deadline) const;
  // Has the program do what the item stands for, or the usual one in its submenu. `sent` becomes true just
  // before the program is told to.
  [[nodiscard]] Performed activate(const ExportedItem& item, Deadline deadline,
                                   std::atomic<bool>& sent) const;

 private:
  // Absent for an item without an action.
  [[nodiscard]] std::optional<QDBusPendingCall> callAction(const QString& method, const ExportedItem& item,
                                                           const QVariantList& more, Deadline deadline) const;

  const AtSpiBus& bus_;
  ExportedMenuBar bar_;
};

}  // namespace pellar
