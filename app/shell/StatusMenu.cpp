#include "app/shell/StatusMenu.h"

#include <utility>

#include "app/shell/AutoSave.h"
#include "core/AppState.h"
#include "core/Log.h"
#include "core/Notify.h"
#include "core/Weakly.h"
#include "platform/LoginItem.h"
#include "platform/Workspace.h"

namespace pellar {

std::shared_ptr<StatusMenu> StatusMenu::create(const Platform& platform, std::shared_ptr<StateStore> store,
                                               std::shared_ptr<WindowTracker> tracker,
                                               std::shared_ptr<Updater> updater) {
  return std::shared_ptr<StatusMenu>(
      new StatusMenu(platform, std::move(store), std::move(tracker), std::move(updater)));
}

StatusMenu::StatusMenu(const Platform& platform, std::shared_ptr<StateStore> store,
                       std::shared_ptr<WindowTracker> tracker, std::shared_ptr<Updater> updater)
    : platform_(platform),
      store_(std::move(store)),
      tracker_(std::move(tracker)),
      updater_(std::move(updater)) {}

template <class Action>
ClosureItem StatusMenu::item(std::string title, Action action) {
  return {std::move(title), weakly(weak_from_this(), std::move(action))};
}

template <class Action>
ClosureItem StatusMenu::checkedItem(std::string title, bool checked, Action action) {
  auto made = item(std::move(title), std::move(action));
  made.checked = checked;
  return made;
}

void StatusMenu::change(const std::function<void(Settings&)>& change) {
  store_->update([&](AppState& state) { change(state.settings); });
}

// Which applications are followed is asked at each refresh.
void StatusMenu::changeFollowing(const std::function<void(Settings&)>& change) {
  this->change(change);
  tracker_->refresh();
}

Menu StatusMenu::items() {
  Menu menu;
  appendUpdate(menu);
  appendFollowing(menu);
  menu.emplace_back(MenuSeparator{});
  for (const OfficeApp app : allOfficeApps) menu.emplace_back(officeItem(app));
  menu.emplace_back(MenuSeparator{});
  menu.emplace_back(Submenu{"Auto-save changed files", autoSaveChoices()});
  menu.emplace_back(MenuSeparator{});
  appendProgram(menu);
  return menu;
}

void StatusMenu::appendUpdate(Menu& menu) {
  const auto& update = updater_->available();
  if (!update) return;
  auto download = item("Update to " + update->latest + " — Download",
                       [](StatusMenu& self) { self.updater_->openDownload(); });
  download.prominent = true;
  menu.emplace_back(std::move(download));
  menu.emplace_back(MenuSeparator{});
}

void StatusMenu::appendFollowing(Menu& menu) {
  const Settings& settings = store_->state().settings;
  menu.emplace_back(checkedItem("All apps", settings.allApps, [](StatusMenu& self) {
    self.changeFollowing([](Settings& changed) { changed.allApps = !changed.allApps; });
  }));
  if (const auto& app = tracker_->app(); app && !app->office) {
    menu.emplace_back(item("Hide for " + app->name, [id = app->id](StatusMenu& self) {
      self.changeFollowing([&](Settings& changed) { changed.hiddenApps.push_back(id); });
    }));
  }
  if (!settings.hiddenApps.empty()) menu.emplace_back(Submenu{"Hidden apps", hiddenApps()});
}

Menu StatusMenu::hiddenApps() {
  Menu menu;
  for (const auto& id : store_->state().settings.hiddenApps) {
    const std::string name = platform_.workspace.displayName(id).value_or(id);
    menu.emplace_back(item("Show " + name, [id](StatusMenu& self) {
      self.changeFollowing([&](Settings& changed) { std::erase(changed.hiddenApps, id); });
    }));
  }
  return menu;
}

ClosureItem StatusMenu::officeItem(OfficeApp app) {
  return checkedItem(
      std::string(displayName(app)), store_->state().settings.isEnabled(app), [app](StatusMenu& self) {
        self.changeFollowing(
            [app](Settings& changed) { changed.apps[std::string(rawValue(app))] = !changed.isEnabled(app); });
      });
}

Menu StatusMenu::autoSaveChoices() {
  Menu menu;
  for (const auto minutes : AutoSave::choices) {
    menu.emplace_back(
        checkedItem(minutes == 0 ? "Off" : "Every " + std::to_string(minutes) + " min",
                    store_->state().settings.autoSaveMinutes == minutes, [minutes](StatusMenu& self) {
                      self.change([&](Settings& changed) { changed.autoSaveMinutes = minutes; });
                      notify(self.onAutoSaveChosen);
                      // The strip shows whether it is on.
                      self.tracker_->refresh();
                    }));
  }
  return menu;
}

void StatusMenu::appendProgram(Menu& menu) {
  menu.emplace_back(checkedItem("Start at login", platform_.loginItem.status() == LoginItemStatus::enabled,
                                [](StatusMenu& self) { notify(self.onToggleLaunchAtLogin); }));
  menu.emplace_back(checkedItem(
      "Automatically check for updates", store_->state().settings.autoUpdateCheck, [](StatusMenu& self) {
        self.change([](Settings& changed) { changed.autoUpdateCheck = !changed.autoUpdateCheck; });
        if (self.store_->state().settings.autoUpdateCheck) self.updater_->check(false);
      }));
  menu.emplace_back(item("Check for updates now", [](StatusMenu& self) { self.updater_->check(false); }));
  menu.emplace_back(item("About Pellar", [](StatusMenu& self) { notify(self.onShowAbout); }));
  menu.emplace_back(MenuSeparator{});
  menu.emplace_back(
      item("Show log", [](StatusMenu& self) { self.platform_.workspace.open(Log::url().string()); }));
  menu.emplace_back(MenuSeparator{});
  menu.emplace_back(item("Quit Pellar", [](StatusMenu& self) { self.platform_.application.terminate(); }));
}

}  // namespace pellar
