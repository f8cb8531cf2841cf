#include "platform/sim/menus/SimMenuBar.h"

#include <stdexcept>

namespace pellar {

namespace {

SimMenuPointer make(SimMenuElement::Role role, ProcessId pid, std::uint64_t& nextSerial) {
  auto element = std::make_shared<SimMenuElement>();
  element->role = role;
  element->serial = nextSerial++;
  element->pid = pid;
  return element;
}

SimMenuPointer makeMenu(ProcessId pid, const std::vector<SimMenuItem>& rows, std::uint64_t& nextSerial) {
  using Role = SimMenuElement::Role;
  auto menu = make(Role::menu, pid, nextSerial);
  for (const auto& row : rows) {
    auto item = make(Role::item, pid, nextSerial);
    item->title = row.title;
    item->enabled = item->validated = row.enabled;
    item->onPress = row.onPress;
    if (!row.submenu.empty()) item->children.push_back(makeMenu(pid, row.submenu, nextSerial));
    menu->children.push_back(std::move(item));
  }
  return menu;
}

}  // namespace

SimMenuElement& SimMenuElement::child(std::string_view named) const {
  for (const auto& candidate : opensMenu() ? children.at(0)->children : children) {
    if (candidate->title == named) return *candidate;
  }
  throw std::logic_error("no menu has \"" + std::string(named) + "\"");
}

SimMenuPointer makeSimMenuBar(ProcessId pid, const std::vector<SimMenuTitle>& titles,
                              std::uint64_t& nextSerial) {
  using Role = SimMenuElement::Role;
  auto bar = make(Role::bar, pid, nextSerial);
  for (const auto& described : titles) {
    auto title = make(Role::title, pid, nextSerial);
    title->title = described.title;
    title->children.push_back(makeMenu(pid, described.items, nextSerial));
    bar->children.push_back(std::move(title));
  }
  return bar;
}

void validate(SimMenuElement& element) {
  element.validated = element.enabled;
  for (const auto& child : element.children) validate(*child);
}

void dismantle(SimMenuElement& element) {
  element.exists = false;
  for (const auto& child : element.children) dismantle(*child);
}

}  // namespace pellar
