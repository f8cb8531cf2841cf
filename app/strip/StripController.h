#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <vector>

#include "app/automation/Automation.h"
#include "app/strip/StripMenus.h"
#include "app/strip/card/HoverPanels.h"
#include "app/strip/documents/DocumentPaths.h"
#include "app/strip/documents/StripDocuments.h"
#include "app/strip/search/RecentSearch.h"
#include "app/strip/tabs/SpringLoading.h"
#include "app/strip/tabs/TabStripView.h"
#include "app/strip/windows/PictureTicket.h"
#include "app/strip/windows/PushDown.h"
#include "app/strip/windows/TrackedPicture.h"
#include "app/strip/windows/WindowActions.h"
#include "app/strip/windows/WindowGroupDrag.h"
#include "app/tracking/PlaceInFront.h"
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
                                                 std::shared_ptr<StateStore> store,
                                                 std::shared_ptr<DocumentPaths> paths,
                                                 std::shared_ptr<Automation> automation,
                                                 const std::shared_ptr<PlaceInFront>& place,
                                                 const Platform& platform);
  ~StripController() override;
  StripController(const StripController&) = delete;
  StripController& operator=(const StripController&) = delete;

  // The strip's auto-save tool was pressed, or chosen in its menu.
  std::function<void()> autoSaveToggled;
  // What `canCycle` answers may have changed.
  std::function<void()> canCycleMayHaveChanged;
  // The current terms are not accepted: every picture hides the strip, and nothing opens with it.
  bool locked = false;

  void tracker(WindowTracker& tracker, const std::optional<TrackedApp>& app, const WindowList& windows,
               const std::shared_ptr<OfficeWindow>& front) override;

  // Takes the strip and all that hangs on it off the screen, until the next picture.
  void hide();

  // Focuses the window of the next tab, or of the previous one; wraps at both ends.
  void cycle(bool forward);
  // Whether there is another tab to go to, on a strip that the user sees.
  [[nodiscard]] bool canCycle() const { return panel_->isVisible() && picture_->windows.size() > 1; }

  // Opens the search for recently used files.
  void openRecent() { search_->open(); }

  [[nodiscard]] const Panel& panel() const { return *panel_; }

 private:
  StripController(std::shared_ptr<WindowTracker> tracker, std::shared_ptr<StateStore> store,
                  std::shared_ptr<DocumentPaths> paths, std::shared_ptr<Automation> automation,
                  const std::shared_ptr<PlaceInFront>& place, const Platform& platform);
  void connect();

  [[nodiscard]] bool ownApplicationIsFrontmost() const;
  [[nodiscard]] bool mustHide() const;
  void show();
  [[nodiscard]] std::vector<TabItem> tabItems() const;
  void makeRoom();

  void perform(StripAction action, const MouseEvent& event);
  void selectTab(WindowId id);
  void dragGroup(ScreenPoint offset);
  void endDrag();

  std::shared_ptr<WindowTracker> tracker_;
  std::shared_ptr<StateStore> store_;
  Platform platform_;
  std::unique_ptr<Panel> panel_;
  std::unique_ptr<TabStripView> view_;  // depends-on: panel_

  std::shared_ptr<TrackedPicture> picture_ = std::make_shared<TrackedPicture>();
  std::shared_ptr<RecentSearch> search_;  // depends-on: panel_, view_
  PictureTickets tickets_;
  std::shared_ptr<WindowActions> actions_;
  std::shared_ptr<DocumentPaths> paths_;
  std::shared_ptr<StripDocuments> documents_;
  std::shared_ptr<StripMenus> menus_;
  HoverPanels hoverPanels_;
  SpringLoading springLoading_;
  PushDown pushDown_;
  WindowGroupDrag drag_;
  Subscription screensChanged_;
};

}  // namespace pellar
