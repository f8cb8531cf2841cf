#pragma once

#include <functional>
#include <memory>
#include <string>

#include "app/info/Updater.h"
#include "app/tracking/WindowTracker.h"
#include "core/OfficeApp.h"
#include "core/Settings.h"
#include "core/StateStore.h"
#include "platform/Menu.h"
#include "platform/Platform.h"

namespace pellar {

// The menu of the item in the menu bar. It holds no state: it is built anew from the settings, the picture,
// the update and the login item each time it opens. Main thread only.
class StatusMenu : public std::enable_shared_from_this<StatusMenu> {
 public:
  // What `platform` refers to outlives this.
  static std::shared_ptr<StatusMenu> create(const Platform& platform, std::shared_ptr<StateStore> store,
                                            std::shared_ptr<WindowTracker> tracker,
                                            std::shared_ptr<Updater> updater);
  StatusMenu(const StatusMenu&) = delete;
  StatusMenu& operator=(const StatusMenu&) = delete;

  // The interval in the settings was chosen anew.
  std::function<void()> onAutoSaveChosen;
  std::function<void()> onToggleLaunchAtLogin;
  std::function<void()> onShowAbout;

  // What the menu shows now. The items do nothing once this object is gone.
  [[nodiscard]] Menu items();

 private:
  StatusMenu(const Platform& platform, std::shared_ptr<StateStore> store,
             std::shared_ptr<WindowTracker> tracker, std::shared_ptr<Updater> updater);

  template <class Action>
  ClosureItem item(std::string title, Action action);
  template <class Action>
  ClosureItem checkedItem(std::string title, bool checked, Action action);

  void appendUpdate(Menu& menu);
  void appendFollowing(Menu& menu);
  [[nodiscard]] Menu hiddenApps();
  [[nodiscard]] ClosureItem officeItem(OfficeApp app);
  [[nodiscard]] Menu autoSaveChoices();
  void appendProgram(Menu& menu);

  void change(const std::function<void(Settings&)>& change);
  void changeFollowing(const std::function<void(Settings&)>& change);

  Platform platform_;
  std::shared_ptr<StateStore> store_;
  std::shared_ptr<WindowTracker> tracker_;
  std::shared_ptr<Updater> updater_;
};

}  // namespace pellar
