#include "platform/sim/desktop/SimStatusBar.h"

#include <stdexcept>
#include <utility>

#include "core/Notify.h"

namespace pellar {

Subscription SimStatusBar::addItem(const StatusItemLook& look, std::function<Menu()> menu) {
  if (menu_) throw std::logic_error("the program has an item in the menu bar already");
  look_ = look;
  menu_ = std::move(menu);
  return Subscription([this] { menu_ = nullptr; });
}

std::string SimStatusBar::item() const {
  if (!menu_) throw std::logic_error("the program has no item in the menu bar");
  if (!images.contains(look_.imageName)) return look_.title;
  return "[" + look_.imageName + ", " + std::to_string(static_cast<int>(look_.imageHeight)) + "]";
}

void SimStatusBar::open(const std::function<void(SimOpenMenu&)>& user) {
  if (!menu_) throw std::logic_error("the program has no item in the menu bar");
  const Menu menu = menu_();
  SimOpenMenu open(menu);
  {
    const auto tracking = loop_.enterOtherMode();
    loop_.runUntilIdle();
    user(open);
    loop_.runUntilIdle();
    if (const auto chosen = open.chosen()) {
      // It stands before what waits for the default mode.
      loop_.post(chosen);
      loop_.runUntilIdle();
    }
  }
  loop_.runUntilIdle();
}

void SimStatusBar::openMenu() {
  if (!menu_) return;
  loop_.post([this] {
    if (!menu_) return;
    ++openings_;
    open([this](SimOpenMenu& menu) { notify(std::exchange(onOpening, nullptr), menu); });
  });
}

std::vector<std::string> SimStatusBar::rows(const std::string& submenu) {
  std::vector<std::string> rows;
  open([&](SimOpenMenu& menu) { rows = submenu.empty() ? menu.rows() : menu.rows({submenu}); });
  return rows;
}

void SimStatusBar::choose(std::initializer_list<std::string> titles) {
  open([&](SimOpenMenu& menu) { menu.choose(titles); });
}

}  // namespace pellar
