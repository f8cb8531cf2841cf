#pragma once

#include <QIcon>

// The program's mark as a tray shows it.
namespace pellar::MenuBarIcon {

// Two tabs, one behind the other, light with a dark edge, so that they stand out on trays of either shade.
[[nodiscard]] QIcon make();

}  // namespace pellar::MenuBarIcon
