#include "platform/sim/popups/SimMenus.h"

#include <stdexcept>
#include <utility>
#include <variant>

namespace pellar {

namespace {

// The first row of its kind with this title; a user tells the kinds apart.
template <class Kind>
const Kind* find(const Menu& menu, const std::string& title) {
  for (const auto& item : menu) {
    const auto* row = std::get_if<Kind>(&item);
    if (row != nullptr && row->title == title) return row;
  }
  return nullptr;
}

std::string rowOf(const MenuItem& item) {
  if (std::holds_alternative<MenuSeparator>(item)) return "---";
  if (const auto* submenu = std::get_if<Submenu>(&item)) return submenu->title + " ▸";
  const auto& closure = std::get<ClosureItem>(item);
  const std::string row = closure.checked ? "✓ " + closure.title : closure.title;
  return closure.enabled ? row : "(" + row + ")";
}

}  // namespace

std::vector<std::string> SimOpenMenu::rowsOf(const Menu& menu) {
  std::vector<std::string> rows;
  rows.reserve(menu.size());
  for (const auto& item : menu) rows.push_back(rowOf(item));
  return rows;
}

const Menu& SimOpenMenu::descend(std::initializer_list<std::string> titles, std::size_t levels) const {
  const Menu* menu = &menu_;
  for (std::size_t level = 0; level < levels; ++level) {
    const auto& title = *(titles.begin() + level);
    const auto* submenu = find<Submenu>(*menu, title);
    if (submenu == nullptr) throw std::logic_error("the menu has no submenu \"" + title + "\"");
    menu = &submenu->items;
  }
  return *menu;
}

std::vector<std::string> SimOpenMenu::rows(std::initializer_list<std::string> titles) const {
  return rowsOf(descend(titles, titles.size()));
}

const ClosureItem& SimOpenMenu::item(std::initializer_list<std::string> titles) const {
  const auto& last = *(titles.end() - 1);
  const auto* closure = find<ClosureItem>(descend(titles, titles.size() - 1), last);
  if (closure == nullptr) throw std::logic_error("the menu has no item \"" + last + "\"");
  return *closure;
}

void SimOpenMenu::choose(std::initializer_list<std::string> titles) {
  const auto& closure = item(titles);
  if (!closure.enabled) throw std::logic_error("\"" + closure.title + "\" is disabled");
  chosen_ = closure.handler;
}

void SimMenus::popUpContextMenu(const Menu& menu, const MouseEvent& event) {
  if (open_) return;
  SimOpenMenu open(menu);
  {
    const Subscription closed([this] { open_ = false; });
    open_ = true;
    const auto tracking = loop_.enterOtherMode();
    shown_.push_back(open.rows());
    places_.push_back(event.screenLocation);
    loop_.runUntilIdle();
    if (!users_.empty()) {
      const auto user = std::move(users_.front());
      users_.pop_front();
      user(open);
      loop_.runUntilIdle();
    }
  }
  if (const auto chosen = open.chosen()) chosen();
}

void SimMenus::nextChoose(std::initializer_list<std::string> titles) {
  next([titles = std::vector<std::string>(titles)](SimOpenMenu& menu) {
    switch (titles.size()) {
      case 1:
        return menu.choose({titles[0]});
      case 2:
        return menu.choose({titles[0], titles[1]});
      default:
        throw std::logic_error("menus are at most two deep");
    }
  });
}

}  // namespace pellar
