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

}  // namespace

SimMenuElement& SimMenuElement::child(std::string_view named) const {
  for (const auto& candidate : role == Role::title ? children.at(0)->children : children) {
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
    auto menu = make(Role::menu, pid, nextSerial);
    for (const auto& row : described.items) {
      auto item = make(Role::item, pid, nextSerial);
      item->title = row.title;
      item->enabled = row.enabled;
      item->onPress = row.onPress;
      menu->children.push_back(std::move(item));
    }
    title->children.push_back(std::move(menu));
    bar->children.push_back(std::move(title));
  }
  return bar;
}

void dismantle(SimMenuElement& element) {
  element.exists = false;
  for (const auto& child : element.children) dismantle(*child);
}

}  // namespace pellar
