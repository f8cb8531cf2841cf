#pragma once

#include <cstddef>
#include <deque>
#include <functional>
#include <initializer_list>
#include <string>
#include <utility>
#include <vector>

#include "platform/MenuPresenter.h"
#include "platform/sim/system/SimMainLoop.h"

namespace pellar {

// A menu that is open before the user.
class SimOpenMenu {
 public:
  explicit SimOpenMenu(const Menu& menu) : menu_(menu) {}

  // What the user reads, a row each: "---" for a separator, a title in parentheses when it cannot be chosen,
  // "✓ " before a checked one, " ▸" after one that opens a submenu.
  [[nodiscard]] std::vector<std::string> rows() const { return rowsOf(menu_); }
  // The same of the submenu under these titles.
  [[nodiscard]] std::vector<std::string> rows(std::initializer_list<std::string> titles) const;
  // The item under these titles, the last one its own. Throws when there is none.
  [[nodiscard]] const ClosureItem& item(std::initializer_list<std::string> titles) const;
  // Chooses the item under these titles: its handler runs once the menu is closed. Throws when the user could
  // not.
  void choose(std::initializer_list<std::string> titles);

  // For SimMenus.
  [[nodiscard]] const std::function<void()>& chosen() const { return chosen_; }

 private:
  [[nodiscard]] static std::vector<std::string> rowsOf(const Menu& menu);
  [[nodiscard]] const Menu& descend(std::initializer_list<std::string> titles, std::size_t levels) const;

  const Menu& menu_;
  std::function<void()> chosen_;
};

// Pop-up menus and what the user does with them. A menu that no story waits for is closed without a choice.
// What other applications report meanwhile is heard after the handler of the chosen item.
class SimMenus final : public MenuPresenter {
 public:
  using User = std::function<void(SimOpenMenu&)>;

  explicit SimMenus(SimMainLoop& loop) : loop_(loop) {}

  void popUpContextMenu(const Menu& menu, const MouseEvent& event) override;

  // What the user does with the next menu that opens, and with the one after it.
  void next(User user) { users_.push_back(std::move(user)); }
  // The same for an item that is just chosen.
  void nextChoose(std::initializer_list<std::string> titles);

  // How many menus the user still waits for.
  [[nodiscard]] std::size_t awaited() const { return users_.size(); }

  // The rows of every menu shown, in order, and where each was.
  [[nodiscard]] const std::vector<std::vector<std::string>>& shown() const { return shown_; }
  [[nodiscard]] const std::vector<ScreenPoint>& places() const { return places_; }

 private:
  SimMainLoop& loop_;
  std::deque<User> users_;
  std::vector<std::vector<std::string>> shown_;
  std::vector<ScreenPoint> places_;
  bool open_ = false;
};

}  // namespace pellar
