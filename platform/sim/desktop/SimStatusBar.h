#pragma once

#include <functional>
#include <initializer_list>
#include <set>
#include <string>
#include <vector>

#include "platform/StatusBar.h"
#include "platform/sim/popups/SimMenus.h"
#include "platform/sim/system/SimMainLoop.h"

namespace pellar {

// The menu bar's right end: the program's item, and what the user does with its menu.
class SimStatusBar final : public StatusBar {
 public:
  explicit SimStatusBar(SimMainLoop& loop) : loop_(loop) {}

  [[nodiscard]] Subscription addItem(const StatusItemLook& look, std::function<Menu()> menu) override;
  void openMenu() override;

  // The images among the program's resources.
  std::set<std::string> images{"MenuBarTemplate"};

  // What the user does with the menu that the program opens next; else it is closed without a choice.
  std::function<void(SimOpenMenu&)> onOpening;
  // How often the program opened the menu.
  [[nodiscard]] int openings() const { return openings_; }

  [[nodiscard]] bool hasItem() const { return menu_ != nullptr; }
  // What is seen of the item: "[name of the image, its height]", or a title.
  [[nodiscard]] std::string item() const;

  // The user opens the menu and does something with it. The main loop runs while it is open, and when it is
  // closed again. Throws when there is no item.
  void open(const std::function<void(SimOpenMenu&)>& user);
  // The rows of the menu, or of a submenu of it; it is closed again without a choice.
  [[nodiscard]] std::vector<std::string> rows(const std::string& submenu = {});
  void choose(std::initializer_list<std::string> titles);

 private:
  SimMainLoop& loop_;
  StatusItemLook look_;
  std::function<Menu()> menu_;
  int openings_ = 0;
};

}  // namespace pellar
