#include "app/automation/FileMenu.h"

#include <array>
#include <optional>
#include <string>
#include <vector>

#include "app/tracking/AX.h"
#include "core/Log.h"

namespace pellar::FileMenu {

namespace {

using Elements = std::vector<Element>;

std::optional<Elements> children(Accessibility& accessibility, const Element& element) {
  return AX::value<Elements>(accessibility, element, "AXChildren");
}

bool isTitled(Accessibility& accessibility, const Element& element, std::string_view title) {
  const auto read = AX::value<std::string>(accessibility, element, "AXTitle");
  return read && *read == title;
}

// A press of such an item does nothing, or leaves its menu open before the user.
bool opensMenu(Accessibility& accessibility, const Element& item) {
  const auto menus = children(accessibility, item);
  return menus && !menus->empty();
}

std::optional<Element> fileMenuBarItem(Accessibility& accessibility, ProcessId pid) {
  const auto menuBar = AX::value<Element>(accessibility, accessibility.applicationElement(pid), "AXMenuBar");
  if (!menuBar) return std::nullopt;
  const auto items = children(accessibility, *menuBar);
  if (!items) return std::nullopt;
  for (const Element& item : *items) {
    if (isTitled(accessibility, item, "File")) return item;
  }
  // In another language: the first one after the system's own menu.
  if (items->size() < 2) return std::nullopt;
  return (*items)[1];
}

std::optional<Elements> fileMenuItems(Accessibility& accessibility, ProcessId pid) {
  const auto item = fileMenuBarItem(accessibility, pid);
  if (!item) return std::nullopt;
  const auto menus = children(accessibility, *item);
  if (!menus || menus->empty()) return std::nullopt;
  return children(accessibility, menus->front());
}

// The menu acts on the application's main window.
bool pressSave(Accessibility& accessibility, const OfficeWindow& window) {
  static constexpr std::array<std::string_view, 1> titles{"Save"};
  accessibility.set(window.element, "AXMain", true);
  return pressFileMenu(accessibility, window.pid, titles);
}

}  // namespace

bool pressFileMenu(Accessibility& accessibility, ProcessId pid, std::span<const std::string_view> titles) {
  const auto items = fileMenuItems(accessibility, pid);
  if (!items) return false;
  for (const std::string_view title : titles) {
    for (const Element& item : *items) {
      if (!isTitled(accessibility, item, title)) continue;
      // An item that does not say whether it is enabled decides when it is pressed.
      if (!AX::value<bool>(accessibility, item, "AXEnabled").value_or(true) || opensMenu(accessibility, item))
        continue;
      // What was not answered may be done, and is not to be done twice.
      return accessibility.perform(item, "AXPress") != Performed::refused;
    }
  }
  return false;
}

bool save(Accessibility& accessibility, OfficeWindow& window) {
  const auto known = window.path;
  if (!known || window.askPath(accessibility) != known) return false;
  return pressSave(accessibility, window);
}

void saveAll(Accessibility& accessibility, const WindowList& windows,
             const std::shared_ptr<OfficeWindow>& front) {
  int saved = 0;
  for (const auto& window : windows) {
    if (window->minimized) continue;
    // Without a file, pressing Save would ask the user for one.
    if (!window->askPath(accessibility) && !window->titleNamesPath()) continue;
    if (pressSave(accessibility, *window)) ++saved;
  }
  if (front) accessibility.set(front->element, "AXMain", true);
  Log::write("save all: " + std::to_string(saved) + " of " + std::to_string(windows.size()) + " windows");
}

}  // namespace pellar::FileMenu
