#pragma once

#include <functional>

#include "platform/Menu.h"

class QMenu;

// A menu's value as rows of the toolkit's menu.
namespace pellar::QtMenuItems {

// Who shows the menu: each takes another character for the mark of a key.
enum class Reader { toolkit, sessionBus };

// Appends the rows. `onChosen` gets the handler of the row that the user chooses, and runs it when it sees
// fit.
void fill(QMenu& native, const Menu& menu,
          const std::function<void(const std::function<void()>& handler)>& onChosen,
          Reader reader = Reader::toolkit);

// Closes every menu that is open, a submenu before the one it hangs from.
void closeOpenMenus();

}  // namespace pellar::QtMenuItems
