#pragma once

#include <chrono>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <unordered_map>
#include <unordered_set>
#include <vector>

#include "app/strip/RecentDropdown.h"
#include "app/strip/TabStripView.h"
#include "app/strip/WindowGroupDrag.h"
#include "app/tracking/WindowTracker.h"
#include "core/StateStore.h"
#include "platform/Platform.h"

namespace pellar {

// Turns the tracker's pictures into the strip over the focused window, and the strip's gestures into actions
// on the real windows. It never edits its own picture: every action asks the tracker for the next one. Main
// thread only.
class StripController final : public WindowTrackerDelegate,
                              public std::enable_shared_from_this<StripController> {
 public:
  // Becomes the tracker's delegate. What `platform` refers to outlives the controller.
  static std::shared_ptr<StripController> create(std::shared_ptr<WindowTracker> tracker,
                                                 std::shared_ptr<StateStore> store, const Platform& platform);
  ~StripController() override;
  StripController(const StripController&) = delete;
  StripController& operator=(const StripController&) = delete;

  // Names of an Office application's open documents and their POSIX paths.
  using DocumentPaths = std::unordered_map<std::string, std::string>;
  // Asked for when windows have no path, at most once in 30 seconds for each. May block. Unset means nothing
  // is known.
  std::function<DocumentPaths(OfficeApp)> pathsByName;
  // The strip's auto-save tool was pressed.
  std::function<void()> autoSaveToggled;
  // The current terms are not accepted: every picture hides the strip.
  bool locked = false;

  void tracker(WindowTracker& tracker, const std::optional<TrackedApp>& app, const WindowList& windows,
               const std::shared_ptr<OfficeWindow>& front) override;

  // Focuses the window of the next tab, or of the previous one; wraps at both ends.
  void cycle(bool forward);

  void openRecent();
  void closeRecent();

  [[nodiscard]] const Panel& panel() const { return *panel_; }

 private:
  StripController(std::shared_ptr<WindowTracker> tracker, std::shared_ptr<StateStore> store,
                  const Platform& platform);
  void connect();

  [[nodiscard]] std::shared_ptr<OfficeWindow> window(WindowId id) const;
  [[nodiscard]] bool ownApplicationIsFrontmost() const;
  [[nodiscard]] bool mustHide() const;
  void hide();
  void show();
  [[nodiscard]] std::vector<TabItem> tabItems() const;
  void resolvePathsIfNeeded(const TrackedApp& app, const WindowList& windows);
  void recordRecent(const TrackedApp& app, const WindowList& windows);
  bool pushDownIfNeeded(OfficeWindow& window);

  void perform(StripAction action);
  void selectTab(WindowId id);
  void raise(const OfficeWindow& window);
  void minimize(const OfficeWindow& window);
  void close(const OfficeWindow& window);
  void closeAll();
  void zoom(OfficeWindow& window);
  void dragGroup(ScreenPoint offset);
  void endDrag();
  void searchTextChanged();

  std::shared_ptr<WindowTracker> tracker_;
  std::shared_ptr<StateStore> store_;
  Platform platform_;
  std::unique_ptr<Panel> panel_;
  std::unique_ptr<TabStripView> view_;  // depends-on: panel_
  RecentDropdown dropdown_;             // depends-on: panel_, view_

  std::optional<TrackedApp> app_;
  WindowList windows_;
  std::shared_ptr<OfficeWindow> front_;
  std::uint64_t reports_ = 0;  // pictures taken over so far
  std::unordered_set<std::string> recordedRecent_;
  std::unordered_map<WindowId, std::chrono::nanoseconds> pathChecked_;  // uptime of the last look-up
  std::unordered_map<WindowId, AxRect> restoreFrames_;
  WindowGroupDrag drag_;
  Subscription resignedKey_;
};

}  // namespace pellar
