#pragma once

#include <memory>
#include <string>
#include <vector>

#include "tests/e2e/Desktop.h"

namespace pellar::e2e {

// A tray of status-notifier items on the desktop's session bus, and a user who works Pellar's item in it. To
// be made before Pellar is started.
class Tray {
 public:
  using Rows = std::vector<std::string>;

  // Opens the session bus.
  explicit Tray(Desktop& desktop);

  // Ends it and starts another one.
  void restart();

  // Until Pellar's item is there.
  void waitForItem();
  // Category, name and status of the item, and the sizes of its icon.
  [[nodiscard]] Rows item() { return ask("item"); }
  // The menu: "✓ " before what is checked, "---" for a separator, " ▸" behind a submenu, whose rows follow
  // indented by two spaces.
  [[nodiscard]] Rows rows() { return ask("rows"); }
  // Chooses an item by its title, "Submenu/Title" in a submenu. Throws when there is none.
  void choose(const std::string& titles);
  // Clicks the icon.
  void activate() { ask("activate"); }
  // Calls the item and its menu that often as no tray should: rows that are not there, values of any kind.
  void pester(int calls) { ask("pester " + std::to_string(calls)); }

 private:
  Rows ask(const std::string& command);

  Desktop& desktop_;
  std::unique_ptr<Process> process_;
};

}  // namespace pellar::e2e
