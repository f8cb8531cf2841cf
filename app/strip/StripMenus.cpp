#include "app/strip/StripMenus.h"

#include <algorithm>
#include <iterator>
#include <utility>

#include "app/strip/tabs/TagColors.h"
#include "core/AppState.h"
#include "core/Notify.h"
#include "core/TabLabel.h"
#include "core/Tile.h"
#include "core/Weakly.h"
#include "platform/MenuPresenter.h"
#include "platform/Pasteboard.h"
#include "platform/Workspace.h"

namespace pellar {
namespace {

void append(Menu& menu, Menu items) {
  std::ranges::move(items, std::back_inserter(menu));
}

}  // namespace

std::shared_ptr<StripMenus> StripMenus::create(const Platform& platform, std::shared_ptr<StateStore> store,
                                               std::shared_ptr<const TrackedPicture> picture,
                                               std::shared_ptr<WindowActions> actions,
                                               std::shared_ptr<DocumentPaths> paths,
                                               std::shared_ptr<StripDocuments> documents) {
  return std::shared_ptr<StripMenus>(new StripMenus(platform, std::move(store), std::move(picture),
                                                    std::move(actions), std::move(paths),
                                                    std::move(documents)));
}

StripMenus::StripMenus(const Platform& platform, std::shared_ptr<StateStore> store,
                       std::shared_ptr<const TrackedPicture> picture, std::shared_ptr<WindowActions> actions,
                       std::shared_ptr<DocumentPaths> paths, std::shared_ptr<StripDocuments> documents)
    : platform_(platform),
      store_(std::move(store)),
      picture_(std::move(picture)),
      actions_(std::move(actions)),
      paths_(std::move(paths)),
      documents_(std::move(documents)) {}

// An item whose action is called with this object, unless it is gone by then.
template <class Action>
ClosureItem StripMenus::item(std::string title, Action action) {
  return {std::move(title), weakly(weak_from_this(), std::move(action))};
}

WindowList StripMenus::inPlaceOf(const std::vector<WindowReference>& seen) {
  actions_->lookAgain();
  return actions_->windows().inPlaceOf(seen);
}

// --- the menu of a tab ---

void StripMenus::showTabMenu(WindowId id, const MouseEvent& event) {
  auto window = picture_->window(id);
  if (!window) return;
  const auto reference = actions_->windows().remember(window);
  const auto known = paths_->ask(window);
  const auto path = known ? std::optional(known->path) : std::nullopt;
  // Another picture may have come while the path was looked up; else the application is asked nothing.
  if (picture_->window(id) != window) window = actions_->windows().find(reference);
  if (!window) return;

  Menu menu = closeItems(reference, window->app);
  menu.emplace_back(MenuSeparator{});
  append(menu, fileItems(reference, window->app, path));
  menu.emplace_back(MenuSeparator{});
  menu.emplace_back(Submenu{"Layout", tileMenu(reference)});
  menu.emplace_back(Submenu{"Colour tag", tagMenu(reference, TabLabel::tagKey(window->title, path))});
  platform_.menus.popUpContextMenu(menu, event);
}

Menu StripMenus::closeItems(const WindowReference& window, const TrackedApp& app) {
  const auto seen = actions_->windows().remember(picture_->windows);
  Menu menu;
  menu.emplace_back(item("Close", [window](StripMenus& self) {
    if (const auto target = self.actions_->windows().find(window)) self.actions_->close(WindowList{target});
  }));
  menu.emplace_back(item("Close others", [window, seen](StripMenus& self) {
    auto others = self.inPlaceOf(seen);
    std::erase_if(others, [&](const auto& each) { return window.means(*each); });
    self.actions_->close(others);
  }));
  menu.emplace_back(
      item("Close all", [seen](StripMenus& self) { self.actions_->close(self.inPlaceOf(seen)); }));
  if (const auto office = app.office)
    menu.emplace_back(item("Save all", [office](StripMenus& self) { self.documents_->saveAll(*office); }));
  return menu;
}

Menu StripMenus::fileItems(const WindowReference& window, const TrackedApp& app,
                           const std::optional<std::string>& path) {
  const std::string known = path.value_or("");
  auto rename =
      item("Rename…", [window, known](StripMenus& self) { self.documents_->rename(window, known); });
  auto reveal = item("Open containing folder", [known](StripMenus& self) {
    self.platform_.workspace.activateFileViewerSelecting(known);
  });
  auto copy = item("Copy path", [known](StripMenus& self) { self.platform_.pasteboard.setString(known); });
  // Of Outlook's windows no path is ever known.
  rename.enabled = path && app.office;
  reveal.enabled = copy.enabled = path.has_value();
  return {rename, reveal, copy};
}

Menu StripMenus::tileMenu(const WindowReference& window) {
  Menu menu;
  for (const Tile tile : allTiles) {
    menu.emplace_back(item(std::string(title(tile)), [window, tile](StripMenus& self) {
      if (const auto target = self.actions_->windows().find(window)) self.actions_->tile(*target, tile);
    }));
  }
  return menu;
}

Menu StripMenus::tagMenu(const WindowReference& window, const std::string& key) {
  const auto current = store_->state().tag(key);
  Menu menu;
  for (const TagColor color : allTagColors) {
    auto choice = item(std::string(shownName(color)), [window, key, color](StripMenus& self) {
      self.documents_->setTag(window, key, color);
    });
    choice.checked = current == color;
    choice.swatch = shownColor(color);
    menu.emplace_back(std::move(choice));
  }
  menu.emplace_back(MenuSeparator{});
  menu.emplace_back(
      item("None", [window, key](StripMenus& self) { self.documents_->setTag(window, key, std::nullopt); }));
  return menu;
}

// --- the menu of the "more" tool ---

void StripMenus::showMoreMenu(const MouseEvent& event) {
  const auto shown = *picture_;
  Menu menu;
  if (const auto office = shown.app->office) {
    std::optional<WindowReference> front;
    if (shown.front) front = actions_->windows().remember(shown.front);
    menu.emplace_back(item("Rename…", [front](StripMenus& self) {
      if (front) self.documents_->rename(*front);
    }));
    menu.emplace_back(item(store_->state().settings.autoSaves() ? "Auto-save: on" : "Auto-save: off",
                           [](StripMenus& self) { notify(self.onAutoSave); }));
    menu.emplace_back(item("Save all", [office](StripMenus& self) { self.documents_->saveAll(*office); }));
    menu.emplace_back(
        item("New document", [office](StripMenus& self) { self.documents_->newDocument(*office); }));
    menu.emplace_back(MenuSeparator{});
  }
  menu.emplace_back(item("Groups…", [event](StripMenus& self) { self.showGroupsMenu(event); }));
  menu.emplace_back(item("Close all", [seen = actions_->windows().remember(shown.windows)](StripMenus& self) {
    self.actions_->close(self.inPlaceOf(seen));
  }));
  platform_.menus.popUpContextMenu(menu, event);
}

// --- the menu of the groups ---

void StripMenus::showGroupsMenu(const MouseEvent& event) {
  Menu menu;
  const auto seen = actions_->windows().remember(picture_->windows);
  menu.emplace_back(item("Save open tabs as group…",
                         [seen](StripMenus& self) { self.documents_->saveGroup(self.inPlaceOf(seen)); }));
  menu.emplace_back(MenuSeparator{});
  const auto& groups = store_->state().groups;
  for (const auto& [name, files] : groups) menu.emplace_back(Submenu{name, groupMenu(name, files.size())});
  if (groups.empty()) menu.emplace_back(ClosureItem{"No groups yet", {}, false});
  platform_.menus.popUpContextMenu(menu, event);
}

Menu StripMenus::groupMenu(const std::string& name, std::size_t fileCount) {
  return {item("Open " + std::to_string(fileCount) + " files",
               [name](StripMenus& self) { self.documents_->openGroup(name); }),
          item("Delete group", [name](StripMenus& self) { self.documents_->deleteGroup(name); })};
}

}  // namespace pellar
