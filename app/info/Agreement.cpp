#include "app/info/Agreement.h"

namespace pellar {

std::string_view agreementText() {
  return "This is an agreement between you and the makers of Pellar. It is short on purpose; please read "
         "it.\n"
         "\n"
         "1. You may use Pellar on every computer you work with, for any lawful purpose, at home or at "
         "work.\n"
         "\n"
         "2. Pellar reads the titles, positions and files of your windows to draw its tabs. None of this "
         "leaves "
         "your computer. The only thing it asks its web site for is the newest version, and you can switch "
         "that "
         "off.\n"
         "\n"
         "3. Pellar saves, renames and closes files only when you tell it to or switch auto-save on. Please "
         "keep "
         "copies of what matters to you.\n"
         "\n"
         "4. Pellar comes as it is, without warranty, as far as the law allows. Every right that the law "
         "gives you "
         "stays untouched.\n"
         "\n"
         "5. You may end this agreement at any time by deleting Pellar. If these terms change, you will be "
         "asked "
         "again.\n";
}

}  // namespace pellar
