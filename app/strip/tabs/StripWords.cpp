#include "app/strip/tabs/StripWords.h"

namespace pellar::StripWords {

std::string_view name(StripAction action) {
  switch (action) {
    case StripAction::search:
      return "Search recent files";
    case StripAction::more:
      return "More";
    case StripAction::rename:
      return "Rename";
    case StripAction::autoSave:
      return "Auto-save";
    case StripAction::saveAll:
      return "Save all";
    case StripAction::closeAll:
      return "Close all";
    case StripAction::groups:
      return "Groups";
    case StripAction::newDoc:
      return "New document";
    case StripAction::minimize:
      return "Minimise";
    case StripAction::zoom:
      return "Zoom";
    case StripAction::closeWindow:
      return "Close";
  }
  return "";
}

std::string_view help(StripAction action) {
  switch (action) {
    case StripAction::search:
      return "Finds a file that was used before";
    case StripAction::more:
      return "Shows the tools for which the strip has no room";
    case StripAction::rename:
      return "Gives the file of this window another name";
    case StripAction::autoSave:
      return "Saves open documents every few minutes";
    case StripAction::saveAll:
      return "Saves every open document of the application";
    case StripAction::closeAll:
      return "Closes every window of the application";
    case StripAction::groups:
      return "Opens a group of files, or keeps the open ones as a group";
    case StripAction::newDoc:
      return "Opens a new document";
    case StripAction::minimize:
      return "Puts this window away";
    case StripAction::zoom:
      return "Makes this window fill the screen, or gives it its old size back";
    case StripAction::closeWindow:
      return "Closes this window";
  }
  return "";
}

}  // namespace pellar::StripWords
